#include "documents/letter/PageFields.h"

#include "documents/rtf/Properties.h"

#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

namespace documents {

namespace {

enum class Shows { Nothing, Page, Count };

struct Field {
  int position;
  int length;
  Shows shows;
  QString name;  ///< Tells it from its neighbours.
};

/// What stands for a number: the field around the text, or the piece in its place.
QByteArray InstructionOf(const QTextCharFormat& format) {
  if (format.hasProperty(rtf::PieceProperty)) {
    return format.property(rtf::PieceProperty).value<rtf::Piece>().Bytes();
  }
  const rtf::Links links = format.property(rtf::LinkProperty).value<rtf::Links>();
  return links.isEmpty() ? QByteArray() : links.last().head.Bytes();
}

QString NameOf(const QTextCharFormat& format) {
  return format.stringProperty(rtf::LinkNameProperty) + format.stringProperty(rtf::PieceNameProperty);
}

Shows KindOf(const QTextCharFormat& format) {
  const QByteArray instruction = InstructionOf(format);
  if (instruction.startsWith("\\chpgn")) {
    return Shows::Page;
  }
  static const QRegularExpression code(QStringLiteral("\\\\fldinst\\W*(?:\\\\\\w+\\W*)*(PAGE|NUMPAGES)\\b"),
                                       QRegularExpression::CaseInsensitiveOption);
  // It stands at the beginning of what may be an embedded object of many megabytes.
  constexpr qsizetype longest = 4096;
  const QString word = code.match(QString::fromLatin1(instruction.left(longest))).captured(1);
  if (word.isEmpty()) {
    return Shows::Nothing;
  }
  return word.startsWith(u'P', Qt::CaseInsensitive) ? Shows::Page : Shows::Count;
}

QList<Field> FieldsOf(const QTextDocument& pages) {
  QList<Field> fields;
  for (QTextBlock block = pages.begin(); block.isValid(); block = block.next()) {
    for (auto at = block.begin(); !at.atEnd(); ++at) {
      const QTextFragment run = at.fragment();
      const QString name = NameOf(run.charFormat());
      if (name.isEmpty() || run.charFormat().isImageFormat()) {
        continue;
      }
      if (!fields.isEmpty() && fields.last().name == name &&
          fields.last().position + fields.last().length == run.position()) {
        fields.last().length += run.length();
      } else if (const Shows shows = KindOf(run.charFormat()); shows != Shows::Nothing) {
        fields.append({run.position(), run.length(), shows, name});
      }
    }
  }
  return fields;
}

}  // namespace

void FillPageFields(QTextDocument& pages, const std::function<int(int)>& pageOf, int count) {
  const QList<Field> fields = FieldsOf(pages);
  QStringList numbers;
  for (const Field& field : fields) {
    numbers.append(QString::number(field.shows == Shows::Count ? count : pageOf(field.position) + 1));
  }
  // From the last one on, so that positions stay.
  for (qsizetype i = fields.size() - 1; i >= 0; --i) {
    QTextCursor cursor(&pages);
    cursor.setPosition(fields[i].position);
    cursor.setPosition(fields[i].position + fields[i].length, QTextCursor::KeepAnchor);
    QTextCharFormat format = cursor.charFormat();
    format.setObjectType(QTextFormat::NoObject);
    cursor.insertText(numbers[i], format);
  }
}

}  // namespace documents
