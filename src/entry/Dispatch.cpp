#include "entry/Dispatch.h"

#include "banking/Dialogs.h"
#include "framework/Desktop.h"
#include "framework/HostServices.h"
#include "framework/Messages.h"
#include "labels/Dialogs.h"
#include "letters/Dialogs.h"
#include "platform/automation/Error.h"
#include "platform/contract/cConstNodo.h"
#include "publications/Dialogs.h"
#include "reference/Dialogs.h"
#include "remittances/Dialogs.h"
#include "taxes/Dialogs.h"

#include <algorithm>
#include <array>
#include <map>

using namespace framework;
using namespace Qt::StringLiterals;

namespace entry::dispatch {

namespace {

using Instances = std::map<QString, std::unique_ptr<MaintenanceForm>>;

// A dialog's default instance is made by its first use and lives until it is released. One that never is stays when the
// program ends: the application, which windows need, is gone before them.
Instances& DefaultInstances() {
  static auto* instances = new Instances;
  return *instances;
}

MaintenanceForm& DefaultInstance(const Entry& entry) {
  std::unique_ptr<MaintenanceForm>& instance = DefaultInstances()[entry.dialog];
  if (!instance) {
    instance = entry.create();
  }
  if (instance->IsInUse()) {
    throw automation::Error(automation::FormAlreadyShown);
  }
  return *instance;
}

// Releases the row's default instance, whichever way the dialog ended.
class Release {
 public:
  explicit Release(const Entry& entry) : m_entry(entry) {}
  Release(const Release&) = delete;
  Release& operator=(const Release&) = delete;
  ~Release() {
    Desktop::Current().DoEvents();
    // Messages that were pending may have opened it again.
    const auto found = DefaultInstances().find(m_entry.released);
    if (found != DefaultInstances().end() && !found->second->IsInUse()) {
      DefaultInstances().erase(found);
    }
  }

 private:
  const Entry& m_entry;
};

void ShowInstance(const Entry& entry, bool guarded) {
  MaintenanceForm& dialog = DefaultInstance(entry);
  const Release release(entry);
  if (guarded) {
    const Hourglass hourglass;
    dialog.Load();
  }
  dialog.ShowModal();
}

Outcome Show(const Entry& entry) {
  if (entry.opening == Opening::WithPrinter && Desktop::Current().PrinterCount() == 0) {
    ShowMessageWithBeep(102, vbInformation);
    return Outcome::NoPrinter;
  }
  if (entry.opening == Opening::GuardedLoadOfARecord && objApi().IDSeleccionado() == 0) {
    return Outcome::Done;
  }
  ShowInstance(entry, entry.opening == Opening::GuardedLoad || entry.opening == Opening::GuardedLoadOfARecord);
  return Outcome::Done;
}

Entry Row(const QVariant& node, const QString& dialog, Opening opening, std::unique_ptr<MaintenanceForm> (*create)(),
          const QString& released = {}) {
  return {node, dialog, opening, create, released.isEmpty() ? dialog : released};
}

}  // namespace

std::span<const Entry> Table() {
  using enum Opening;
  static constexpr cConstNodo node;
  static const std::array table{
      Row(node.Bancos(), u"frmBanco"_s, GuardedLoad, banking::CreateFrmBanco),
      Row(node.Sucursales(), u"frmSucursal"_s, Modal, banking::CreateFrmSucursal),
      Row(node.Cabeceras(), u"frmCabecera"_s, Modal, letters::CreateFrmCabecera),
      Row(node.CartasModelo(), u"frmCartaModelo"_s, WithPrinter, letters::CreateFrmCartaModelo),
      Row(node.Diocesis(), u"frmDiocesis"_s, Modal, reference::CreateFrmDiocesis),
      Row(node.Emisores(), u"frmEmisor"_s, Modal, remittances::CreateFrmEmisor),
      Row(node.Paises(), u"frmPais"_s, Modal, reference::CreateFrmPais),
      Row(node.Presentadores(), u"frmPresentador"_s, Modal, remittances::CreateFrmPresentador),
      Row(node.Cobradores(), u"frmCobrador"_s, Modal, remittances::CreateFrmCobrador),
      Row(node.Provincias(), u"frmProvincia"_s, Modal, reference::CreateFrmProvincia),
      Row(node.Publicaciones(), u"frmPublicacion"_s, Modal, publications::CreateFrmPublicacion),
      Row(node.TipoDonativos(), u"frmTipoDonativo"_s, Modal, taxes::CreateFrmTipoDonativo),
      Row(node.TipoDeduccion(), u"frmTipoDeduccion"_s, Modal, taxes::CreateFrmTipoDeduccion),
      Row(node.Etiquetas(), u"frmEtiquetas1"_s, Modal, labels::CreateFrmEtiquetas1),
      // Intended: never reached, for the same node stands above.
      Row(node.Cobradores(), u"frmCobrador"_s, GuardedLoad, remittances::CreateFrmCobrador),
      // Intended: the release clears the deduction type's dialog; this one's own default instance stays.
      Row(node.DeduccionesComunidad(), u"frmDeduccionComunidad"_s, Modal, taxes::CreateFrmDeduccionComunidad,
          u"frmTipoDeduccion"_s),
      Row(node.ComunidadAutonoma(), u"frmComunidadAutonoma"_s, Modal, taxes::CreateFrmComunidadAutonoma),
      Row(node.Encabezados(), u"frmEncabezado"_s, GuardedLoadOfARecord, letters::CreateFrmEncabezado),
  };
  return table;
}

Outcome ShowDialog(qint32 node) {
  const auto found = std::ranges::find(Table(), QVariant(node), &Entry::node);
  return found == Table().end() ? Outcome::Done : Show(*found);
}

}  // namespace entry::dispatch
