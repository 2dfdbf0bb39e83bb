#include "database/sqlite/SqliteText.h"

#include <QStringDecoder>

#include <algorithm>

namespace database {

QString TextFromEngine(std::string_view bytes) {
  const QByteArrayView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
  if (bytes.starts_with("\xEF\xBB\xBF")) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    return decoder(view);
  }
  return QString::fromUtf8(view);
}

qsizetype CharactersIn(std::string_view bytes) {
  return std::count_if(bytes.begin(), bytes.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; });
}

}  // namespace database
