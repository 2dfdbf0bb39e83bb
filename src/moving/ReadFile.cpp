#include "moving/ReadFile.h"

#include "moving/CsvReader.h"
#include "moving/HeadedRows.h"

namespace moving {

void ReadFile(const QString& path, SourceListener& listener, const database::Stop& stop) {
  HeadedRows headed(listener);
  if (KindOfFile(path) == FileKind::List) {
    ReadCsv(path, headed, stop);
  } else {
    ReadForeignFile(path, headed, stop);
  }
}

}  // namespace moving
