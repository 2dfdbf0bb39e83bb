#include "host/mailing/pieces/Letterhead.h"

#include "documents/markers/ValueText.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace host {

QStringList ReadLetterhead(adodb::Connection& connection, int letterhead) {
  constexpr int lineCount = 5;
  const auto row = adodb::Execute(connection,
                                  u"SELECT Linea1, Linea2, Linea3, Linea4, Linea5 FROM Cabeceras WHERE Eliminado=0 AND "
                                  u"IDCabecera={}",
                                  letterhead);
  QStringList lines;
  for (int i = 0; i < lineCount && !row->AtEnd(); ++i) {
    const QString line = documents::ValueText(automation::Text(row->Field(i))).replace(u'\n', u' ').trimmed();
    if (!line.isEmpty()) {
      lines.append(line);
    }
  }
  if (lines.isEmpty()) {
    throw automation::Error(automation::InvalidProcedureCall,
                            u"No hay ninguna cabecera con el número %1, o no dice nada."_s.arg(letterhead));
  }
  return lines;
}

void PutAbove(QTextDocument& letter, const QStringList& lines) {
  QTextCursor cursor(&letter);
  const QTextBlockFormat paragraph = cursor.blockFormat();
  const QTextCharFormat mark = cursor.blockCharFormat();
  cursor.setPosition(1);
  QTextCharFormat text;
  text.setFontFamilies(cursor.charFormat().fontFamilies().toStringList());
  text.setFontPointSize(cursor.charFormat().fontPointSize());
  cursor.setPosition(0);
  cursor.insertBlock(paragraph, mark);
  cursor.setPosition(0);
  cursor.setBlockFormat({});
  cursor.insertText(lines.join(QChar::LineSeparator) + QChar::LineSeparator, text);
}

}  // namespace host
