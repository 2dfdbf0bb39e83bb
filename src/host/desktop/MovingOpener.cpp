#include "host/desktop/MovingOpener.h"

#include "host/moving/window/MovingAssistant.h"

#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace host {

bool BringFileIn(const Session& session, const QString& connectionString, QWidget* parent) {
  const QString usual = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/Kel"_s;
  MovingAssistant assistant(PlaceFor(session, connectionString, usual), session.title, parent);
  assistant.exec();
  return assistant.HasBrought();
}

}  // namespace host
