#include "framework/MaintenanceForm.h"

#include "framework/CargarTextosFormulario.h"
#include "framework/FocusWatch.h"
#include "framework/Messages.h"
#include "framework/NestedRequest.h"
#include "platform/automation/Conversion.h"
#include "resources/StringTable.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QIcon>
#include <QLineEdit>
#include <QStandardItemModel>
#include <QTableView>

#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace framework {
namespace {

constexpr cConstAccion action;

// Runs one step of several that are all tried; keeps the first error.
template <typename Step>
void Try(std::optional<automation::Error>& error, Step step) {
  try {
    step();
  } catch (...) {
    if (!error) {
      error = automation::CurrentError();
    }
  }
}

void Press(QObject* control) {
  if (auto* button = qobject_cast<QAbstractButton*>(control)) {
    button->click();
  } else if (auto* item = qobject_cast<QAction*>(control)) {
    item->trigger();
  }
}

}  // namespace

MaintenanceForm::MaintenanceForm(FormCard card) : Form(card.name), m_card(std::move(card)) {}

MaintenanceForm::~MaintenanceForm() = default;

void MaintenanceForm::OnLoad() {
  m_lockedKey.reset();
  m_created.reset();
  m_written = false;
  m_loadFailed = true;
  if (std::holds_alternative<ErrorLetOut>(m_card.errors)) {
    LoadAsTheRequestSays();
  } else {
    Trap([this] { LoadAsTheRequestSays(); });
  }
}

void MaintenanceForm::LoadAsTheRequestSays() {
  try {
    CargarTextosFormulario(this);
    AskInstallation();
    setWindowIcon(QIcon(objApi().Icono()));
    if (m_grid) {
      HostServices::Fresh().CargarAnchos(m_grid, WidthsKey(), m_card.name);
    }
    if (!LoadRecord()) {
      return;
    }
    if (m_card.prompt != 0) {
      HostServices::Fresh().establecercontrolcambioformulario(Controls());
    }
    m_loadFailed = false;
  } catch (...) {
    // The unload of a form whose load failed asks the host for nothing, so the lock goes here.
    std::optional<automation::Error> ignored;
    Try(ignored, [this] { ReleaseRecord(); });
    throw;
  }
}

void MaintenanceForm::LockRecord(const QObjectList& more) {
  const HostServices services = HostServices::Fresh();
  const qint32 key = Id();
  bool held = false;
  const bool heldElsewhere = services.BloqueoRegistro(m_card.name, m_card.lock, key, held);
  if (held) {
    m_lockedKey = key;
  }
  if (heldElsewhere) {
    if (m_accept) {
      services.BloquearControles(m_accept);
    }
    for (QObject* control : more) {
      services.BloquearControles(control);
    }
  }
}

void MaintenanceForm::ReleaseRecord() {
  if (const std::optional<qint32> key = std::exchange(m_lockedKey, std::nullopt)) {
    HostServices::Fresh().DesbloqueoRegistro(m_card.name, m_card.lock, *key);
  }
}

void MaintenanceForm::OnQueryUnload(bool& cancel, UnloadMode mode) {
  if (mode == FormCode || m_loadFailed || m_card.prompt == 0) {
    return;
  }
  if (!HostServices::Fresh().controlcambioformulario(Controls())) {
    return;
  }
  switch (Ask(m_card.prompt, vbYesNoCancel + vbQuestion)) {
    case vbYes:
      // Intended: the form closes even when Accept refuses to write.
      Press(m_yes ? m_yes : m_accept);
      break;
    case vbCancel:
      cancel = true;
      break;
    default:
      break;
  }
}

// Every step is tried, so that a failing one does not leave the record locked; the first error is told.
void MaintenanceForm::OnUnload() {
  if (m_loadFailed) {
    return;
  }
  std::optional<automation::Error> error;
  if (!m_created && !m_written && m_card.cancel != CancelAnswer::Nothing) {
    // A dialog that was opened for another one and wrote nothing says so, however it was closed.
    Try(error, [this] {
      if (IsNuevo()) {
        objApi().IDAux(0);
      }
    });
  }
  if (m_grid) {
    Try(error, [this] { HostServices::Fresh().SalvarAnchos(m_grid, WidthsKey(), m_card.name); });
  }
  Try(error, [this] { ReleaseRecord(); });
  if (error) {
    Desktop::Current().Beep();
    Tell(*error, u"Form_Unload"_s);
  }
}

void MaintenanceForm::Buttons(QObject* accept, QAbstractButton* cancel) {
  m_accept = accept;
  if (auto* button = qobject_cast<QAbstractButton*>(accept)) {
    On(button, &QAbstractButton::clicked, [this] { AcceptAndClose(); });
  } else if (auto* item = qobject_cast<QAction*>(accept)) {
    On(item, &QAction::triggered, [this] { AcceptAndClose(); });
  }
  if (cancel != nullptr) {
    cancel->setProperty("SirveEnConsulta", true);
    On(cancel, &QAbstractButton::clicked, [this] { CancelAndClose(); });
  }
}

void MaintenanceForm::AcceptAndClose() {
  if (!LeaveFields()) {
    return;
  }
  if (m_card.accept.isEmpty()) {
    ValidateAndWrite();
  } else {
    Trap(m_card.accept, [this] { ValidateAndWrite(); });
  }
}

void MaintenanceForm::ValidateAndWrite() {
  if (!Validate()) {
    return;
  }
  m_writing.emplace(this);
  try {
    m_written = Write();
  } catch (...) {
    m_writing.reset();
    throw;
  }
  m_writing.reset();
  if (m_written) {
    Unload();
  }
}

// False when the form was closed meanwhile.
bool MaintenanceForm::LeaveFields() {
  if (auto* button = qobject_cast<QAbstractButton*>(m_accept)) {
    button->setFocus();
  }
  Desktop::Current().DoEvents();
  return IsLoaded();
}

void MaintenanceForm::CancelAndClose() {
  if (m_card.cancel == CancelAnswer::Zero || (m_card.cancel == CancelAnswer::ZeroUnderNuevo && IsNuevo())) {
    objApi().IDAux(0);
  }
  Unload();
}

FocusWatch* MaintenanceForm::Watch(QWidget* control) {
  auto* watch = control->findChild<FocusWatch*>(QString(), Qt::FindDirectChildrenOnly);
  return watch != nullptr ? watch : new FocusWatch(control);
}

void MaintenanceForm::SelectTextOnFocusOf(QWidget* box) {
  OnEnter(box, [box] { HostServices::Fresh().SeleccionarTexto(box); });
}

void MaintenanceForm::OnEnter(QWidget* control, const std::function<void()>& handler) {
  On(Watch(control), &FocusWatch::Entered, handler);
}

void MaintenanceForm::OnLeave(QWidget* control, const std::function<void()>& handler) {
  On(Watch(control), &FocusWatch::Left, handler);
}

void MaintenanceForm::OnChosen(QComboBox* combo, const std::function<void()>& handler) {
  On(combo, &QComboBox::currentIndexChanged, [handler](int index) {
    if (index >= 0) {
      handler();
    }
  });
}

void MaintenanceForm::CouplePostcode(QLineEdit* postcode, QComboBox* province) {
  constexpr qsizetype prefixLength = 2;
  const QString procedure = u"SeleccionarProvinciaCP"_s;
  OnLeave(postcode, Trapped(procedure, [postcode, province] {
            if (postcode->text().trimmed().size() >= prefixLength) {
              HostServices::Fresh().SeleccionarCP_Provincia(postcode, province);
            }
          }));
  OnLeave(province, Trapped(procedure, [postcode, province] {
            if (province->currentIndex() >= 0) {
              HostServices::Fresh().SeleccionarCP_Provincia(province, postcode);
            }
          }));
}

bool MaintenanceForm::IsAdd() const {
  const int requested = objApi().Accion();
  return requested == action.Agregar() || requested == action.Nuevo();
}

bool MaintenanceForm::IsModify() const {
  return objApi().Accion() == action.Modificar();
}

bool MaintenanceForm::IsNuevo() const {
  return objApi().Accion() == action.Nuevo();
}

QVariant MaintenanceForm::FirstField(const QString& statement, QStringView field) const {
  const auto rs = Connection().Execute(statement);
  return rs->AtEnd() ? automation::Null() : rs->Field(field);
}

void MaintenanceForm::HandBack(qint32 id) {
  objApi().IDAux(id);
  m_created = id;
}

void MaintenanceForm::HandBack(QStringView field, adodb::Statement<> statement) {
  HandBack(IdOrZero(FirstField(statement.Text(), field)));
}

void MaintenanceForm::FillComboFrom(QComboBox* combo, const ItemText& text, QStringView idField, qint32 id,
                                    const QString& statement) const {
  const auto rs = Connection().Execute(statement);
  std::vector<std::unique_ptr<QStandardItem>> items;
  int selected = -1;
  for (; !rs->AtEnd(); rs->MoveNext()) {
    const qint32 itemId = automation::CLng(rs->Field(idField));
    if (itemId == id && selected < 0) {
      selected = static_cast<int>(items.size());
    }
    items.push_back(std::make_unique<QStandardItem>(text(*rs)));
    items.back()->setData(itemId, Qt::UserRole);
  }
  combo->clear();
  // All at once: item by item, thousands take more than twice as long.
  QList<QStandardItem*> rows;
  for (std::unique_ptr<QStandardItem>& item : items) {
    rows.append(item.release());
  }
  static_cast<QStandardItemModel*>(combo->model())->invisibleRootItem()->appendRows(rows);
  combo->setCurrentIndex(selected);
}

QString MaintenanceForm::Text(const QVariant& value) {
  return automation::Text(value);
}

qint32 MaintenanceForm::IdOrZero(const QVariant& value) {
  return automation::IsNull(value) ? 0 : automation::CLng(value);
}

bool MaintenanceForm::IsTrue(const QVariant& value) {
  return !automation::IsNull(value) && automation::CBool(value);
}

QString MaintenanceForm::LoadResString(int id) {
  return resources::LoadResString(id);
}

bool MaintenanceForm::Refuse(QWidget* control, int stringId, int style) {
  return Refuse(control, LoadResString(stringId), style);
}

bool MaintenanceForm::Refuse(QWidget* control, const QString& text, int style) {
  Ask(text, style);
  if (control != nullptr) {
    control->setFocus();
  }
  return false;
}

int MaintenanceForm::Ask(int stringId, int style) {
  return Ask(LoadResString(stringId), style);
}

int MaintenanceForm::Ask(const QString& text, int style) {
  m_writing.reset();
  Desktop::Current().Beep();
  return ShowText(text, style);
}

bool MaintenanceForm::Trap(const std::function<void()>& work) {
  const auto* report = std::get_if<ErrorReport>(&m_card.errors);
  return Trap(report != nullptr ? report->procedure : QString(), work);
}

bool MaintenanceForm::Trap(const QString& procedure, const std::function<void()>& work) {
  try {
    work();
    return true;
  } catch (...) {
    Tell(automation::CurrentError(), procedure);
    return false;
  }
}

std::function<void()> MaintenanceForm::Trapped(const QString& procedure, const std::function<void()>& handler) {
  return [this, procedure, handler] { Trap(procedure, handler); };
}

bool MaintenanceForm::TrapInTransaction(const QString& procedure, const std::function<void()>& work) {
  std::optional<adodb::Transaction> transaction;
  const bool done = Trap(procedure, [&] {
    transaction.emplace(Connection());
    work();
    transaction->Commit();
  });
  if (!done && m_created) {
    objApi().IDAux(0);
    m_created.reset();
  }
  return done;
}

void MaintenanceForm::Tell(const automation::Error& error, const QString& procedure) {
  m_writing.reset();
  if (const auto* box = std::get_if<ErrorBox>(&m_card.errors)) {
    ShowError(box->stringId, error);
    return;
  }
  const auto* report = std::get_if<ErrorReport>(&m_card.errors);
  const bool hasEntity = report != nullptr && !report->entity.isEmpty();
  const bool fresh = report != nullptr && report->freshServices;
  ReportError(error, procedure, hasEntity ? report->entity : m_card.name, ownComponent,
              fresh ? HostServices::Fresh() : objApi());
}

void MaintenanceForm::OpenNested(std::unique_ptr<MaintenanceForm> dialog, const Nested& request,
                                 const std::function<void(qint32)>& created) {
  const NestedRequest nested(request.idAux, request.action);
  dialog->ShowModal();
  OnActivate();
  if (dialog->Created().value_or(0) > 0) {
    created(*dialog->Created());
  }
}

void MaintenanceForm::OpenThroughDispatcher(qint32 node, const std::function<void(qint32)>& created) {
  const NestedRequest nested(0, action.Nuevo());
  objApi().IDNodo(node);
  OwnDispatcher()(objApi().Object());
  OnActivate();
  const qint32 id = objApi().IDAuxNumber();
  if (id > 0) {
    created(id);
  }
}

QString MaintenanceForm::WidthsKey() const {
  return objApi().tituloaplicacion() + u'\\' + objApi().PathNodo();
}

}  // namespace framework
