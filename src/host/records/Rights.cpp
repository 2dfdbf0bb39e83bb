#include "host/records/Rights.h"

using namespace Qt::StringLiterals;

namespace host {

QString RightsText(Rights rights) {
  switch (rights) {
    case Rights::Viewer:
      return u"Solo consulta"_s;
    case Rights::Changes:
      return u"Cambia, no elimina"_s;
    case Rights::ChangesAndDeletes:
      return u"Cambia y elimina"_s;
    case Rights::Administrator:
      return u"Administra"_s;
  }
  return {};
}

}  // namespace host
