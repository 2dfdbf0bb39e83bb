#include "letters/editor/Clipboard.h"

#include "documents/rtf/Rtf.h"

#include <QMimeData>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextDocumentFragment>

#include <array>

using namespace Qt::StringLiterals;

namespace letters {

namespace {

// The names that programs give RTF, ours first.
const std::array rtfNames{u"text/rtf"_s, u"application/rtf"_s, u"text/richtext"_s};
const QString htmlName = u"text/html"_s;

// Beyond this a page is taken as plain text.
constexpr qsizetype largestHtml = 4 * 1024 * 1024;

class LetterData : public QMimeData {
 public:
  explicit LetterData(const QTextCursor& selection)
      : m_fragment(selection.selection()), m_rtf(rtf::WriteSelection(selection)) {
    setText(m_fragment.toPlainText().remove(QChar::ObjectReplacementCharacter));
  }

  QStringList formats() const override {
    QStringList names(rtfNames.begin(), rtfNames.end());
    return names << htmlName << QMimeData::formats();
  }

 protected:
  QVariant retrieveData(const QString& name, QMetaType type) const override {
    if (std::find(rtfNames.begin(), rtfNames.end(), name) != rtfNames.end()) {
      return m_rtf;
    }
    return name == htmlName ? QVariant(m_fragment.toHtml()) : QMimeData::retrieveData(name, type);
  }

 private:
  const QTextDocumentFragment m_fragment;
  const QByteArray m_rtf;
};

// Pictures, style sheets and backgrounds that a page names would be looked for among the files of this machine, where
// some never end. Whatever its tags are, nothing is loaded.
class PageOnItsOwn : public QTextDocument {
 protected:
  QVariant loadResource(int /*type*/, const QUrl& /*name*/) override { return {}; }
};

void RemoveImages(QTextDocument& page) {
  QTextCursor at(&page);
  for (at = page.find(QString(QChar::ObjectReplacementCharacter), at); !at.isNull();
       at = page.find(QString(QChar::ObjectReplacementCharacter), at)) {
    at.removeSelectedText();
  }
}

QByteArray RtfFromHtml(const QString& html) {
  const PageOnItsOwn provider;
  PageOnItsOwn page;
  QTextCursor(&page).insertFragment(QTextDocumentFragment::fromHtml(html, &provider));
  RemoveImages(page);
  return page.isEmpty() ? QByteArray() : rtf::Write(page);
}

}  // namespace

QMimeData* ToClipboard(const QTextCursor& selection) {
  return new LetterData(selection);
}

bool HasText(const QMimeData& data) {
  return data.hasText() || data.hasHtml() ||
         std::any_of(rtfNames.begin(), rtfNames.end(), [&](const QString& name) { return data.hasFormat(name); });
}

QByteArray RtfFrom(const QMimeData& data) {
  for (const QString& name : rtfNames) {
    if (const QByteArray content = data.data(name); content.trimmed().startsWith("{\\rtf")) {
      return content;
    }
  }
  if (const QString html = data.html(); !html.isEmpty() && html.size() <= largestHtml) {
    return RtfFromHtml(html);
  }
  return {};
}

QImage ImageFrom(const QMimeData& data) {
  return data.hasImage() ? data.imageData().value<QImage>() : QImage();
}

QString PlainFrom(const QMimeData& data) {
  QString text = data.text();
  text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
  text.removeIf([](QChar c) {
    const char16_t code = c.unicode();
    const bool isControl = code < 0x20 && code != u'\t' && code != u'\n';
    return isControl || code == QChar::ObjectReplacementCharacter || code == 0xFDD0 || code == 0xFDD1;
  });
  return text;
}

}  // namespace letters
