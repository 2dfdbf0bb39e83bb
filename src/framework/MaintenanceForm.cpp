#include "framework/MaintenanceForm.h"

#include "framework/CargarTextosFormulario.h"
#include "framework/FocusWatch.h"
#include "framework/NestedRequest.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QIcon>
#include <QLineEdit>
#include <QTableView>

#include <utility>

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

MaintenanceForm::MaintenanceForm(FormCard card)
    : Form(card.name), m_card(std::move(card)), m_lock(m_card.name, m_card.lock) {}

MaintenanceForm::~MaintenanceForm() = default;

void MaintenanceForm::OnLoad() {
  m_lock = RecordLock(m_card.name, m_card.lock);
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
    Try(ignored, [this] { m_lock.Release(); });
    throw;
  }
}

void MaintenanceForm::LockRecord(const QObjectList& more) {
  const HostServices services = HostServices::Fresh();
  if (m_lock.Take(services, Id())) {
    return;
  }
  if (m_accept) {
    services.BloquearControles(m_accept);
  }
  for (QObject* control : more) {
    services.BloquearControles(control);
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
  Try(error, [this] { m_lock.Release(); });
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
  if (IsLoaded()) {
    // A form that is not active yet, as after its own prompt, got no event of it.
    FocusWatch::LeaveAll(*this, m_accept);
  }
  return IsLoaded();
}

void MaintenanceForm::CancelAndClose() {
  if (m_card.cancel == CancelAnswer::Zero || (m_card.cancel == CancelAnswer::ZeroUnderNuevo && IsNuevo())) {
    objApi().IDAux(0);
  }
  Unload();
}

void MaintenanceForm::SelectTextOnFocusOf(QWidget* box) {
  OnEnter(box, [box] { HostServices::Fresh().SeleccionarTexto(box); });
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

void MaintenanceForm::HandBack(qint32 id) {
  objApi().IDAux(id);
  m_created = id;
}

void MaintenanceForm::HandBack(QStringView field, adodb::Statement<> statement) {
  HandBack(IdOrZero(LookUp(field, statement)));
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
  TellError(m_card, error, procedure);
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
