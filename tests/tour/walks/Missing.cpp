#include "tour/Walks.h"

#include "platform/contract/cConstAccion.h"

#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace tour {

namespace {

constexpr cConstAccion action;

}  // namespace

// The nodes whose dialogs this version does not have answer with one message each.
void WalkMissing(Tour& tour) {
  for (const int missing : {26}) {
    tour.Windows().Answer(QMessageBox::Ok);
    tour.Step(u"Nodo %1: un mensaje"_s.arg(missing), {.node = missing, .action = action.Modificar(), .id = 1}, {}, {});
  }
}

}  // namespace tour
