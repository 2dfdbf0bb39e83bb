#include "host/paper/ListExport.h"

#include "host/mailing/output/Outputs.h"
#include "host/paper/ListPages.h"
#include "moving/TableWriter.h"
#include "platform/automation/Error.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// LibreOffice marks so what it has open; what it saves later would take the new file's place.
void RequireClosed(const QString& path) {
  const QFileInfo file(path);
  if (QFileInfo::exists(file.dir().filePath(u".~lock.%1#"_s.arg(file.fileName())))) {
    throw automation::Error(
        automation::InvalidProcedureCall,
        u"El archivo «%1» está abierto en otro programa. Ciérrelo allí, o elija otro nombre."_s.arg(path));
  }
}

bool ExportTable(const ListTable& table, const QString& path, RunControl& control) {
  control.Begin(table.RowCount());
  const auto writer = moving::MakeTableWriter(path, moving::Purpose::List);
  writer->Begin(table.title, table.Headings());
  QList<QVariant> values(table.ColumnCount());
  for (int row = 0; row < table.RowCount(); ++row) {
    if (control.IsCancelled()) {
      return false;
    }
    for (int column = 0; column < table.ColumnCount(); ++column) {
      values[column] = table.Value(row, column);
    }
    writer->Write(values);
    control.PartDone();
  }
  writer->Finish();
  return true;
}

}  // namespace

bool ExportList(const ListTable& table, const QString& path, RunControl& control) {
  RequireClosed(path);
  return path.endsWith(u".pdf"_s, Qt::CaseInsensitive)
             ? WritePdf(ListPages(table, ListPages::Proposed(table)), path, control)
             : ExportTable(table, path, control);
}

}  // namespace host
