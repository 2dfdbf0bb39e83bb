#include "documents/rtf/Source.h"

#include "documents/rtf/Patch.h"
#include "documents/rtf/Picture.h"

#include <QPointer>
#include <QTextDocument>
#include <QTextFrame>
#include <QUrl>

namespace rtf {

namespace {

constexpr int decodedKilobytes = 64 * 1024;

}  // namespace

Source::Source(QTextDocument& document) : QObject(&document), m_decoded(decodedKilobytes) {
  document.setResourceProvider([self = QPointer<Source>(this)](const QUrl& url) -> QVariant {
    const QImage picture = self == nullptr ? QImage() : self->Picture(url.toString());
    return picture.isNull() ? QVariant() : QVariant(picture);
  });
}

Source& Source::Of(QTextDocument& document) {
  auto* source = document.findChild<Source*>(QString(), Qt::FindDirectChildrenOnly);
  return source != nullptr ? *source : *new Source(document);
}

const Source* Source::Find(const QTextDocument& document) {
  return document.findChild<Source*>(QString(), Qt::FindDirectChildrenOnly);
}

void Source::Remember(const QTextDocument& document, const QByteArray& bytes, const QString& characters,
                      const Seams& seams) {
  m_bytes = bytes;
  m_characters = characters;
  m_seams = seams;
  m_numbers.reset();
  Renew(document);
}

void Source::Renew(const QTextDocument& document) {
  m_rootFormat = document.rootFrame()->formatIndex();
  m_parts = PartsNow(document);
}

// Every change makes another revision, undoing one, too.
const QList<Part>& Source::PartsNow(const QTextDocument& document) const {
  if (m_revision != document.revision()) {
    m_now = PartsOf(document);
    m_revision = document.revision();
  }
  return m_now;
}

void Source::Forget() {
  m_bytes.clear();
  m_characters.clear();
  m_parts.clear();
  m_seams = {};
  m_pictures.clear();
  m_decoded.clear();
}

bool Source::IsUnchanged(const QTextDocument& document) const {
  return !m_parts.isEmpty() && m_rootFormat == document.rootFrame()->formatIndex() && m_parts == PartsNow(document);
}

std::optional<QByteArray> Source::UnchangedBytes(const QTextDocument& document) const {
  return m_characters.isEmpty() && IsUnchanged(document) ? std::optional(m_bytes) : std::nullopt;
}

std::optional<QString> Source::UnchangedCharacters(const QTextDocument& document) const {
  if (!IsUnchanged(document)) {
    return std::nullopt;
  }
  return m_characters.isEmpty() ? QString::fromLatin1(m_bytes) : m_characters;
}

std::optional<QByteArray> Source::Patched(const QTextDocument& document, const QByteArray& bytes) const {
  return m_rootFormat == document.rootFrame()->formatIndex()
             ? rtf::Patched(document, bytes, m_parts, PartsNow(document), m_seams)
             : std::nullopt;
}

const NamedNumbers& Source::Numbers() const {
  if (!m_numbers) {
    m_numbers = NamedNumbers::Of(m_characters.isEmpty() ? m_bytes : m_characters.toUtf8());
  }
  return *m_numbers;
}

QString Source::AddPicture(const Piece& group) {
  const QString name = QStringLiteral("rtf-picture:") + group.Name();
  m_pictures.insert(name, group);
  return name;
}

QImage Source::Picture(const QString& name) {
  if (const QImage* decoded = m_decoded.object(name)) {
    return *decoded;
  }
  const auto known = m_pictures.constFind(name);
  if (known == m_pictures.constEnd()) {
    return {};
  }
  const QImage image = ReadPicture(known->Bytes());
  m_decoded.insert(name, new QImage(image), qMax(qsizetype(1), image.sizeInBytes() / 1024));
  return image;
}

}  // namespace rtf
