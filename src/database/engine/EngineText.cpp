#include "database/engine/EngineText.h"

#include <QStringDecoder>

namespace database {

QString TextFromEngine(std::string_view bytes) {
  const QByteArrayView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
  if (bytes.starts_with("\xEF\xBB\xBF")) {
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    return decoder(view);
  }
  return QString::fromUtf8(view);
}

}  // namespace database
