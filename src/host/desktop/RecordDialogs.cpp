#include "host/desktop/RecordDialogs.h"

#include "host/records/MomentText.h"
#include "host/services/ErrorBox.h"
#include "host/services/PlainBox.h"
#include "platform/automation/Error.h"
#include "platform/contract/cConstAccion.h"
#include "platform/contract/cConstNodo.h"

#include <QPushButton>

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// The name of a strip that is about that record.
QString Subject(const Node& node, int id) {
  return u"strip%1_%2"_s.arg(node.table).arg(id);
}

// "Lorenzo tiene abierta «Colectora Sur» en OFICINA-2 desde las 10:31."
QString HolderSentence(const Node& node, const LockHolder& holder, const QString& name) {
  QString text = u"%1 tiene %2 %3"_s.arg(holder.userName.isEmpty() ? u"Otro usuario"_s : holder.userName,
                                         node.record.startsWith(u"la "_s) ? u"abierta"_s : u"abierto"_s,
                                         name.isEmpty() ? node.record : u"«%1»"_s.arg(name));
  if (!holder.process.machine.isEmpty()) {
    text += u" en "_s + holder.process.machine;
  }
  if (holder.since.isValid()) {
    text += u" desde "_s + MomentText(holder.since);
  }
  return text + u'.';
}

}  // namespace

RecordDialogs::RecordDialogs(ComponentBridge& bridge, QWidget* window)
    : QObject(window), m_bridge(bridge), m_window(window) {}

void RecordDialogs::Add(const Node& node) {
  Guarded(node, {.node = node.id, .action = cConstAccion().Agregar()}, {});
}

void RecordDialogs::Modify(const Node& node, int id, const QString& name) {
  Guarded(node, {.node = node.id, .action = cConstAccion().Modificar(), .selectedId = id}, name);
}

void RecordDialogs::AddBranch(int bankId, const QString& name) {
  Guarded(*FindNode(cConstNodo().Bancos()),
          {.node = cConstNodo().Sucursales(), .action = cConstAccion().Agregar(), .aux = bankId}, name);
}

void RecordDialogs::OpenAgain(const ComponentRequest& request) {
  const bool isBranch = request.node == cConstNodo().Sucursales();
  if (const Node* node = FindNode(isBranch ? cConstNodo().Bancos() : request.node)) {
    Guarded(*node, request, {});
  }
}

void RecordDialogs::Guarded(const Node& node, const ComponentRequest& request, const QString& name) {
  try {
    Open(node, request, name);
  } catch (const automation::Error& error) {
    ShowError(m_window, m_bridge.Session().title, u"El cuadro de «%1» ha fallado."_s.arg(node.title), error);
  }
}

void RecordDialogs::Open(const Node& node, const ComponentRequest& request, const QString& name) {
  const bool isBranch = request.node == cConstNodo().Sucursales();
  if (!isBranch && request.action == cConstAccion().Modificar()) {
    Modify(node, request, name);
    return;
  }
  const int bankId = isBranch ? request.aux.toInt() : 0;
  const std::optional<DeletedRecord> deleted =
      bankId != 0 ? FindDeleted(m_bridge.OpenConnection(), node, bankId) : std::nullopt;
  if (deleted) {
    TellOfDeletion(node, bankId, *deleted, name);
  } else {
    Show(node, request);
  }
}

void RecordDialogs::Modify(const Node& node, ComponentRequest request, const QString& name) {
  const RecordHold hold(m_bridge, node, request.selectedId);
  if (hold.Deleted()) {
    TellOfDeletion(node, request.selectedId, *hold.Deleted(), name);
    return;
  }
  // The other dialogs ask for the lock themselves, and say who has it.
  if (hold.Holder() && !node.dialogLocks) {
    if (!WantsToLook(node, *hold.Holder(), name)) {
      return;
    }
    request.viewOnly = true;
    m_bridge.Session().lastRefusal = hold.Holder();
  }
  Show(node, request, &hold);
}

void RecordDialogs::Show(const Node& node, ComponentRequest request, const RecordHold* hold) {
  request.path = node.Path();
  std::optional<WriteWatch> watch;
  if (m_bridge.Session().office != nullptr) {
    watch.emplace(*m_bridge.Session().office);
  }
  std::optional<automation::Error> failure;
  try {
    m_bridge.ShowDialog(request);
  } catch (const automation::Error& error) {
    failure = error;
  }
  // A dialog that fails may have saved before.
  const QList<WrittenRow> written = watch ? watch->Rows() : QList<WrittenRow>();
  if (hold != nullptr && !m_bridge.IsEnding()) {
    if (const std::optional<Change> release = hold->LockReleased()) {
      TellOfLockRelease(node, *release, written.contains(WrittenRow{node.table, request.selectedId}));
    }
  }
  if (!written.isEmpty() && !m_bridge.IsEnding()) {
    const QList<LostSave> losses = CheckSaved(m_bridge.OpenConnection(), node, request.selectedId, written);
    for (const LostSave& lost : losses) {
      TellOfLoss(lost);
    }
  }
  if (failure) {
    throw automation::Error(*failure);
  }
}

void RecordDialogs::TellOfDeletion(const Node& node, int id, const DeletedRecord& deleted, const QString& name) {
  StripText strip{.subject = Subject(node, id), .text = deleted.Sentence(name)};
  if (deleted.note != 0 && !m_bridge.Session().readOnly) {
    strip.ways.append({u"Re&cuperarlo"_s, [this, note = deleted.note] { Q_EMIT RecoveryWanted(note); }});
  }
  strip.ways.append({u"&Entendido"_s});
  Q_EMIT Told(strip);
}

void RecordDialogs::TellOfLockRelease(const Node& node, const Change& release, bool saved) {
  const auto id = static_cast<int>(release.key);
  const QString text = u"%1 soltó su bloqueo de «%2» %3; "_s.arg(
      release.userName.isEmpty() ? u"Alguien"_s : release.userName, release.name, DayAndTime(release.moment));
  StripText strip{.subject = Subject(node, id),
                  .text = text + (saved ? u"lo guardado después puede haber pisado lo de otra persona."_s
                                        : u"usted no ha guardado nada."_s),
                  .tone = saved ? StripTone::Attention : StripTone::News};
  strip.ways.append({u"Abr&ir "_s + node.record, [this, &node, id] { Q_EMIT RecordWanted(node, id); }});
  strip.ways.append({u"&Entendido"_s});
  Q_EMIT Told(strip);
}

void RecordDialogs::TellOfLoss(const LostSave& lost) {
  const bool ofAnother = lost.savedNode != nullptr;
  StripText strip{
      .subject = Subject(ofAnother ? *lost.savedNode : *lost.deletedNode, ofAnother ? lost.savedId : lost.deletedId),
      .text = lost.text,
      .tone = StripTone::Attention};
  if (lost.note != 0) {
    const QString text = lost.savedNode != nullptr ? u"Re&cuperar "_s + lost.deletedNode->record : u"Re&cuperarlo"_s;
    strip.ways.append({text, [this, note = lost.note] { Q_EMIT RecoveryWanted(note); }});
  }
  if (lost.savedNode != nullptr) {
    strip.ways.append({u"Abr&ir "_s + lost.savedNode->record,
                       [this, node = lost.savedNode, id = lost.savedId] { Q_EMIT RecordWanted(*node, id); }});
  }
  strip.ways.append({u"&Entendido"_s});
  Q_EMIT Told(strip);
}

bool RecordDialogs::WantsToLook(const Node& node, const LockHolder& holder, const QString& name) {
  PlainBox box(QMessageBox::Information, m_bridge.Session().title, HolderSentence(node, holder, name),
               QMessageBox::Open | QMessageBox::Cancel, m_window);
  box.button(QMessageBox::Open)->setText(u"Abrir &solo para consulta"_s);
  box.button(QMessageBox::Cancel)->setText(u"&Cancelar"_s);
  box.setDefaultButton(QMessageBox::Open);
  return box.exec() == QMessageBox::Open;
}

}  // namespace host
