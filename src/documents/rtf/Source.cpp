#include "documents/rtf/Source.h"

#include "documents/rtf/Picture.h"

#include <QCryptographicHash>
#include <QPointer>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextList>
#include <QUrl>

namespace rtf {

namespace {

constexpr int decodedKilobytes = 64 * 1024;

/// A hash over the text and the numbers of its formats, which name the same formats as long as the document lives.
QByteArray Fingerprint(const QTextDocument& document) {
  QCryptographicHash hash(QCryptographicHash::Sha1);
  const auto add = [&hash](const auto* data, qsizetype size) {
    hash.addData(QByteArrayView(reinterpret_cast<const char*>(data), size));
  };
  QList<QTextFrame*> frames{document.rootFrame()};
  while (!frames.isEmpty()) {
    const QTextFrame* frame = frames.takeLast();
    frames.append(frame->childFrames());
    const int numbers[] = {frame->formatIndex(), frame->firstPosition(), frame->lastPosition()};
    add(numbers, sizeof numbers);
  }
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    const QTextList* list = block.textList();
    // The mark of the first paragraph is the document's: what is pasted in front of it may change it, and no undo
    // brings it back.
    const int mark = block.blockNumber() == 0 ? -1 : block.charFormatIndex();
    const int numbers[] = {block.length(), block.blockFormatIndex(), mark, list == nullptr ? -1 : list->formatIndex()};
    add(numbers, sizeof numbers);
    for (auto at = block.begin(); !at.atEnd(); ++at) {
      const QTextFragment fragment = at.fragment();
      const int run[] = {fragment.length(), fragment.charFormatIndex()};
      add(run, sizeof run);
    }
    const QString text = block.text();
    add(text.constData(), text.size() * qsizetype(sizeof(QChar)));
  }
  return hash.result();
}

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

void Source::Remember(const QTextDocument& document, const QByteArray& bytes, const QString& characters) {
  m_bytes = bytes;
  m_characters = characters;
  m_fingerprint = Fingerprint(document);
}

void Source::Renew(const QTextDocument& document) {
  m_fingerprint = Fingerprint(document);
}

void Source::Forget() {
  m_bytes.clear();
  m_characters.clear();
  m_fingerprint.clear();
  m_pictures.clear();
  m_decoded.clear();
}

bool Source::IsUnchanged(const QTextDocument& document) const {
  return !m_fingerprint.isEmpty() && m_fingerprint == Fingerprint(document);
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
