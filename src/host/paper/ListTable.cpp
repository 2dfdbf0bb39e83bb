#include "host/paper/ListTable.h"

#include "platform/text/Counted.h"

using namespace Qt::StringLiterals;

namespace host {

QStringList ListTable::Headings() const {
  QStringList headings;
  for (int column = 0; column < ColumnCount(); ++column) {
    headings.append(Heading(column));
  }
  return headings;
}

bool ListTable::IsNumber(int column) const {
  const ColumnKind kind = Column(column).kind;
  return kind == ColumnKind::Number || kind == ColumnKind::Percentage || kind == ColumnKind::Amount;
}

QString ListTable::CountText() const {
  const bool isOne = RowCount() == 1;
  QString text = texts::Counted(RowCount(), u"registro"_s, u"registros"_s);
  if (!search.isEmpty()) {
    text += (isOne ? u" que contiene «"_s : u" que contienen «"_s) + search.simplified() + u'»';
  }
  return text;
}

}  // namespace host
