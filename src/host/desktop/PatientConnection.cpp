#include "host/desktop/PatientConnection.h"

#include "platform/adodb/ErrorNumbers.h"
#include "platform/automation/Error.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDialog>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QThread>
#include <QVBoxLayout>

#include <optional>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// Shorter waits are nobody's business.
constexpr std::chrono::milliseconds unseen{400};

const QString locked = u"Otro programa está usando la base de datos. Esperando a que termine…"_s;
const QString unreachable =
    u"No hay conexión con el servidor de la base de datos. Esperando a que vuelva…\n"
    "Si cancela, se pierde lo que no haya guardado."_s;

automation::Error LockedFor(std::chrono::milliseconds time) {
  return automation::Error(
      adodb::DatabaseLocked,
      u"Otro programa está usando la base de datos, o recuperando una copia, y no la ha soltado "
      "en %1 s. No se ha guardado nada. Espere a que termine, o ciérrelo, y vuelva a intentarlo."_s.arg(
          (time.count() + 999) / 1000));
}

/// The box of one wait. Closing it, by whatever means, gives up. `longest` 0 is a wait without an end of its own.
class WaitBox : public QDialog {
 public:
  WaitBox(std::chrono::milliseconds longest, const QString& reason) : QDialog(QApplication::activeModalWidget()) {
    setObjectName(u"databaseWait"_s);
    setWindowTitle(u"Base de datos"_s);
    setModal(true);
    auto* bar = new QProgressBar(this);
    bar->setObjectName(u"waited"_s);
    bar->setRange(0, static_cast<int>(longest.count()));
    bar->setTextVisible(false);
    auto* buttons = new QDialogButtonBox(this);
    auto* cancel = buttons->addButton(u"&Cancelar"_s, QDialogButtonBox::RejectRole);
    cancel->setObjectName(u"giveUp"_s);
    // Enter may have been meant for what is waiting now.
    cancel->setAutoDefault(false);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(reason, this));
    layout->addWidget(bar);
    layout->addWidget(buttons);
    m_bar = bar;
    show();
  }

  /// False when the user gave up.
  bool GoOn(std::chrono::milliseconds waited) {
    m_bar->setValue(m_bar->maximum() == 0 ? 0 : static_cast<int>(waited.count()));
    QCoreApplication::processEvents();
    return isVisible();
  }

 private:
  QProgressBar* m_bar;
};

}  // namespace

PatientConnection::PatientConnection(std::unique_ptr<adodb::Connection> real, std::chrono::milliseconds longest)
    : m_real(std::move(real)), m_longest(longest) {}

// Before anything is sent, a server that does not answer is like a file that is locked: it is coming back, or it is
// not.
bool PatientConnection::IsWorthWaiting(const automation::Error& error) const {
  return error.Number() == adodb::DatabaseLocked ||
         (error.Number() == adodb::CannotOpen && m_real->State() == adodb::StateOpen);
}

void PatientConnection::Patiently(const std::function<void()>& work) {
  QElapsedTimer waited;
  waited.start();
  std::optional<WaitBox> box;
  for (;;) {
    std::optional<automation::Error> refusal;
    try {
      work();
      m_hasGivenUp = false;
      return;
    } catch (const automation::Error& error) {
      if (!IsWorthWaiting(error)) {
        throw;
      }
      refusal = error;
    }
    const bool isLocked = refusal->Number() == adodb::DatabaseLocked;
    const auto time = std::chrono::milliseconds(waited.elapsed());
    if (!box && time >= unseen && !m_hasGivenUp) {
      box.emplace(isLocked ? m_longest : std::chrono::milliseconds(0), isLocked ? locked : unreachable);
    }
    // What was typed is not lost while the user waits for the server.
    const bool isOver = isLocked && time >= m_longest;
    if (m_hasGivenUp || isOver || (box && !box->GoOn(time))) {
      m_hasGivenUp = true;
      throw isLocked ? LockedFor(time) : automation::Error(*refusal);
    }
    if (!isLocked) {
      QThread::msleep(static_cast<unsigned long>(tryTime.count()));
    }
  }
}

void PatientConnection::Open() {
  Patiently([this] { m_real->Open(); });
}

void PatientConnection::Open(const QString& connectionString, const QString& user, const QString& password,
                             int options) {
  Patiently([&] { m_real->Open(connectionString, user, password, options); });
}

void PatientConnection::Close() {
  m_hasGivenUp = false;
  m_real->Close();
}

std::unique_ptr<adodb::Recordset> PatientConnection::Execute(const QString& statement) {
  std::unique_ptr<adodb::Recordset> rows;
  Patiently([&] { rows = m_real->Execute(statement); });
  return rows;
}

void PatientConnection::BeginTrans() {
  Patiently([this] { m_real->BeginTrans(); });
}

void PatientConnection::CommitTrans() {
  m_real->CommitTrans();
}

void PatientConnection::RollbackTrans() {
  m_real->RollbackTrans();
}

}  // namespace host
