#include "host/services/Rescue.h"

#include "host/services/ReadOnlyDialog.h"
#include "host/services/ToolkitBox.h"
#include "platform/contract/cConstAccion.h"
#include "platform/contract/cConstNodo.h"

#include <QApplication>
#include <QEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr qsizetype mostKept = 10;
constexpr cConstNodo nodes;

struct DialogNode {
  QLatin1StringView dialog;
  int node;
};

// The contract's names. The letter editor is none of them; the fields of a sheet have no node.
const DialogNode dialogNodes[] = {
    {"frmBanco"_L1, nodes.Bancos()},
    {"frmSucursal"_L1, nodes.Sucursales()},
    {"frmPresentador"_L1, nodes.Presentadores()},
    {"frmEmisor"_L1, nodes.Emisores()},
    {"frmCobrador"_L1, nodes.Cobradores()},
    {"frmPais"_L1, nodes.Paises()},
    {"frmProvincia"_L1, nodes.Provincias()},
    {"frmDiocesis"_L1, nodes.Diocesis()},
    {"frmComunidadAutonoma"_L1, nodes.ComunidadAutonoma()},
    {"frmDeduccionComunidad"_L1, nodes.DeduccionesComunidad()},
    {"frmTipoDeduccion"_L1, nodes.TipoDeduccion()},
    {"frmTipoDonativo"_L1, nodes.TipoDonativos()},
    {"frmPublicacion"_L1, nodes.Publicaciones()},
    {"frmEtiquetas1"_L1, nodes.Etiquetas()},
    {"frmEtiquetas2"_L1, -1},
    {"frmCabecera"_L1, nodes.Cabeceras()},
    {"frmEncabezado"_L1, nodes.Encabezados().toInt()},
};

const DialogNode* NodeOf(const QString& dialog) {
  const auto* const found = std::ranges::find(dialogNodes, dialog, &DialogNode::dialog);
  return found != std::end(dialogNodes) ? found : nullptr;
}

bool SavesInOuter(const QString& dialog, const QString& outer) {
  return dialog == "frmEtiquetas2"_L1 || (dialog == "frmSucursal"_L1 && outer == "frmBanco"_L1);
}

bool IsOfSameRecord(const KeptInput& one, const KeptInput& other) {
  const auto id = [](const KeptInput& input) { return input.request ? input.request->selectedId : 0; };
  return one.dialog == other.dialog && id(one) == id(other);
}

QList<ControlValue> Differing(const QList<ControlValue>& now, const QList<ControlValue>& before) {
  QList<ControlValue> differing;
  for (const ControlValue& value : now) {
    const bool isAsBefore = std::ranges::any_of(
        before, [&](const ControlValue& old) { return old.control == value.control && old.value == value.value; });
    if (!isAsBefore) {
      differing.append(value);
    }
  }
  return differing;
}

QStringList Added(QStringList now, const QStringList& before) {
  for (const QString& row : before) {
    now.removeOne(row);
  }
  return now;
}

}  // namespace

Rescue::Rescue(const QObject& services, const ComponentBridge& bridge) : m_services(services), m_bridge(bridge) {
  qApp->installEventFilter(this);
}

Rescue::~Rescue() = default;

void Rescue::Add(const QList<KeptInput>& inputs) {
  for (auto input = inputs.crbegin(); input != inputs.crend(); ++input) {
    Keep(*input);
  }
}

void Rescue::Discard(const KeptInput& input) {
  m_kept.removeIf([&](const KeptInput& kept) { return IsOfSameRecord(kept, input); });
  Q_EMIT Changed();
}

void Rescue::PutBackInto(const KeptInput& input) {
  m_wanted = input;
}

bool Rescue::eventFilter(QObject* watched, QEvent* event) {
  const bool concerns = (event->type() == QEvent::Show || event->type() == QEvent::Hide) && !event->spontaneous();
  auto* dialog = concerns ? qobject_cast<QDialog*>(watched) : nullptr;
  if (dialog != nullptr) {
    if (event->type() == QEvent::Show && IsWatching() && !IsBoxOfTheToolkit(*dialog)) {
      Begin(*dialog);
    } else if (event->type() == QEvent::Hide) {
      End(*dialog);
    }
  }
  return QObject::eventFilter(watched, event);
}

bool Rescue::IsWatching() const {
  const ComponentRequest* open = m_bridge.OpenRequest();
  return open != nullptr && !open->viewOnly && !m_bridge.Session().readOnly && m_bridge.Session().office != nullptr;
}

void Rescue::Begin(QDialog& dialog) {
  const QString name = dialog.objectName();
  if (NodeOf(name) == nullptr) {
    return;
  }
  auto begun = std::make_unique<Watched>();
  begun->dialog = &dialog;
  begun->savesInOuter = !m_open.empty() && SavesInOuter(name, m_open.back()->input.dialog);
  begun->input.dialog = name;
  begun->input.title = dialog.windowTitle();  // later it may be covered
  begun->input.request = RequestOf(dialog, begun->savesInOuter);
  begun->before = ValuesOf(dialog);
  begun->rowsBefore = RowsOf(dialog);
  begun->writes = std::make_unique<WriteWatch>(*m_bridge.Session().office);
  m_open.push_back(std::move(begun));
  WatchButtons(dialog);
  if (m_wanted && m_wanted->dialog == name) {
    // When the dialog is complete and knows whether it can be changed.
    QTimer::singleShot(0, &dialog,
                       [this, &dialog, input = *std::exchange(m_wanted, std::nullopt)] { PutBackNow(dialog, input); });
  }
}

// A button tells that it was released just before the dialog hears of it.
void Rescue::WatchButtons(QDialog& dialog) {
  const QList<QPushButton*> buttons = dialog.findChildren<QPushButton*>();
  for (QPushButton* button : buttons) {
    if (button->property("SirveEnConsulta").toBool()) {
      connect(button, &QPushButton::released, this, [this, &dialog] {
        Mark(dialog, &Watched::cancelled, true);
        // Where the dialog is still there, the pointer had left the button.
        QTimer::singleShot(0, &dialog, [this, &dialog] { Mark(dialog, &Watched::cancelled, false); });
      });
    } else if (button->isDefault()) {
      connect(button, &QPushButton::released, this, [this, &dialog] { Mark(dialog, &Watched::accepted, true); });
    }
  }
}

void Rescue::Mark(const QDialog& dialog, bool Watched::*mark, bool value) {
  for (const auto& open : m_open) {
    if (open->dialog == &dialog) {
      (*open).*mark = value;
    }
  }
}

std::optional<ComponentRequest> Rescue::RequestOf(const QDialog& dialog, bool savesInOuter) const {
  if (m_open.empty()) {
    return *m_bridge.OpenRequest();
  }
  const int node = NodeOf(dialog.objectName())->node;
  if (savesInOuter || node < 0) {
    return std::nullopt;
  }
  ComponentRequest request{.node = node, .action = m_services.property("Accion").toInt()};
  if (request.action == cConstAccion().Modificar()) {
    request.selectedId = m_services.property("IDSeleccionado").toInt();
  } else {
    request.action = cConstAccion().Agregar();
    request.aux = m_services.property("IDAux").toInt();
  }
  return request;
}

void Rescue::End(QDialog& dialog) {
  if (const auto* box = qobject_cast<QMessageBox*>(&dialog)) {
    Heard(*box);
    return;
  }
  const auto ended = std::ranges::find_if(m_open, [&](const auto& open) { return open->dialog == &dialog; });
  if (ended == m_open.end()) {
    return;
  }
  // With it what it had opened, which can't be there any more.
  while (m_open.back()->dialog != &dialog) {
    m_open.pop_back();
  }
  const std::unique_ptr<Watched> closed = std::move(m_open.back());
  m_open.pop_back();
  Close(*closed);
}

void Rescue::Heard(const QMessageBox& box) {
  if (m_open.empty()) {
    return;
  }
  Watched& asked = *m_open.back();
  // What Accept refuses with a box leaves the dialog there.
  asked.accepted = false;
  if (box.button(QMessageBox::Yes) != nullptr && box.button(QMessageBox::Cancel) != nullptr) {
    const QAbstractButton* pressed = box.clickedButton();
    asked.answer = pressed == box.button(QMessageBox::Yes)  ? Answer::Yes
                   : pressed == box.button(QMessageBox::No) ? Answer::No
                                                            : Answer::None;
    asked.refused = false;
    asked.input.reason.clear();
  } else {
    asked.refused = true;
    asked.input.reason = box.text();
  }
}

void Rescue::Close(Watched& watched) {
  QDialog& dialog = *watched.dialog;
  const qsizetype written = watched.writes->Rows().size();
  watched.input.values = Differing(ValuesOf(dialog), watched.before);
  watched.input.rows = Added(RowsOf(dialog), watched.rowsBefore) + watched.acceptedRows;
  if (!m_open.empty()) {
    m_open.back()->nestedWrites += written;
    if (watched.savesInOuter && watched.accepted) {
      m_open.back()->acceptedRows += Added(RowsOf(dialog), watched.rowsBefore);
    }
  }
  const bool isNothing = watched.input.values.isEmpty() && watched.input.rows.isEmpty();
  if (isNothing || written > watched.nestedWrites || ReadOnlyDialog::Holds({&dialog}) || !IsWorthKeeping(watched)) {
    return;
  }
  if (!m_keepsEverything) {
    watched.input.title = dialog.windowTitle();
  }
  watched.input.moment = QDateTime::currentDateTimeUtc();
  if (const QWidget* focus = dialog.focusWidget()) {
    watched.input.focus = focus->objectName();
  }
  Keep(watched.input);
}

bool Rescue::IsWorthKeeping(const Watched& watched) const {
  if (m_keepsEverything) {
    return true;
  }
  if (watched.answer == Answer::No || watched.cancelled) {
    return false;
  }
  return !watched.savesInOuter || (!watched.accepted && (watched.answer != Answer::Yes || watched.refused));
}

void Rescue::Keep(const KeptInput& input) {
  m_kept.removeIf([&](const KeptInput& kept) { return IsOfSameRecord(kept, input); });
  m_kept.prepend(input);
  m_kept.resize(std::min(m_kept.size(), mostKept));
  Q_EMIT Changed();
}

void Rescue::PutBackNow(QDialog& dialog, const KeptInput& input) {
  if (!dialog.isVisible() || ReadOnlyDialog::Holds({&dialog})) {
    return;
  }
  const QList<ControlValue> refused = PutBack(dialog, input.values);
  auto* focus = dialog.findChild<QWidget*>(input.focus);
  if (focus != nullptr && focus->isEnabled() && !input.focus.isEmpty()) {
    focus->setFocus(Qt::OtherFocusReason);
  }
  Discard(input);
  if (!refused.isEmpty() || !input.rows.isEmpty()) {
    Q_EMIT NotPutBack(input, refused);
  }
}

}  // namespace host
