#include "moving/TableWriter.h"

#include "moving/CsvWriter.h"
#include "moving/OdsWriter.h"
#include "platform/automation/Error.h"

using namespace Qt::StringLiterals;

namespace moving {

TableWriter::~TableWriter() = default;

std::unique_ptr<TableWriter> MakeTableWriter(const QString& path, Purpose purpose) {
  if (path.endsWith(u".csv"_s, Qt::CaseInsensitive)) {
    return std::make_unique<CsvWriter>(path, purpose);
  }
  if (path.endsWith(u".ods"_s, Qt::CaseInsensitive)) {
    return std::make_unique<OdsWriter>(path);
  }
  throw automation::Error(
      automation::InvalidProcedureCall,
      u"No se sabe qué clase de archivo es «%1»: dele un nombre que termine en .ods o .csv."_s.arg(path));
}

}  // namespace moving
