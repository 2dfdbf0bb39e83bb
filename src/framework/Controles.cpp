#include "framework/Controles.h"

#include <QComboBox>

qint32 ItemData(const QComboBox* combo) {
  return combo->currentData(Qt::UserRole).toInt();
}
