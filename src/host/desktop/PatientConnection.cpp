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
#include <QVBoxLayout>

#include <optional>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// Shorter waits are nobody's business.
constexpr std::chrono::milliseconds unseen{400};

/// The box of one wait. Closing it, by whatever means, gives up.
class WaitBox : public QDialog {
 public:
  explicit WaitBox(std::chrono::milliseconds longest) : QDialog(QApplication::activeModalWidget()) {
    setObjectName(u"databaseWait"_s);
    setWindowTitle(u"Base de datos ocupada"_s);
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
    layout->addWidget(new QLabel(u"Otro programa está usando la base de datos. Esperando a que termine…"_s, this));
    layout->addWidget(bar);
    layout->addWidget(buttons);
    m_bar = bar;
    show();
  }

  /// False when the user gave up.
  bool GoOn(std::chrono::milliseconds waited) {
    m_bar->setValue(static_cast<int>(waited.count()));
    QCoreApplication::processEvents();
    return isVisible();
  }

 private:
  QProgressBar* m_bar;
};

}  // namespace

PatientConnection::PatientConnection(std::unique_ptr<adodb::Connection> real, std::chrono::milliseconds longest)
    : m_real(std::move(real)), m_longest(longest) {}

void PatientConnection::Patiently(const std::function<void()>& work) {
  QElapsedTimer waited;
  waited.start();
  std::optional<WaitBox> box;
  for (;;) {
    try {
      work();
      m_hasGivenUp = false;
      return;
    } catch (const automation::Error& error) {
      if (error.Number() != adodb::DatabaseLocked) {
        throw;
      }
    }
    const auto time = std::chrono::milliseconds(waited.elapsed());
    if (!box && time >= unseen && !m_hasGivenUp) {
      box.emplace(m_longest);
    }
    if (m_hasGivenUp || time >= m_longest || (box && !box->GoOn(time))) {
      m_hasGivenUp = true;
      throw automation::Error(
          adodb::DatabaseLocked,
          u"Otro programa está usando la base de datos, o recuperando una copia, y no la ha soltado "
          "en %1 s. No se ha guardado nada. Espere a que termine, o ciérrelo, y vuelva a intentarlo."_s.arg(
              (time.count() + 999) / 1000));
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
