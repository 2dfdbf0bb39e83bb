// A bank and a country opened in their dialogs, changed and saved, as the window asks the component for it: with the
// change log and without it, and with what watches a dialog for what was typed into it.

#include "database/Database.h"
#include "entry/PublishedClasses.h"
#include "host/records/ChangeLog.h"
#include "host/records/OfficeConnection.h"
#include "host/services/Rescue.h"
#include "host/services/ServiceClasses.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/contract/cConstAccion.h"
#include "platform/contract/cConstNodo.h"
#include "support/Race.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr int saves = 20;
constexpr int rounds = 5;
constexpr double mostForRescue = 2.0;
constexpr double mostForLog = 1.25;

/// A record, and how its dialog is saved.
struct Saved {
  const char* name;
  int node;
  QString box;
  QString button;
};

/// Changes a record in a dialog that has been painted, and accepts it.
class Person : public QObject {
 public:
  explicit Person(const Saved& saved) : m_saved(saved) { qApp->installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && watched != m_seen && qobject_cast<QDialog*>(watched) != nullptr) {
      m_seen = static_cast<QDialog*>(watched);
      // Its controls are painted in the same turn.
      QTimer::singleShot(0, this, [this] { Save(); });
    } else if (event->type() == QEvent::Hide && watched == m_seen) {
      m_seen = nullptr;
    }
    return false;
  }

 private:
  void Save() {
    m_seen->findChild<QLineEdit*>(m_saved.box)->setText(u"Número %1"_s.arg(++m_changes));
    m_seen->findChild<QPushButton*>(m_saved.button)->click();
  }

  const Saved& m_saved;
  QDialog* m_seen = nullptr;
  int m_changes = 0;
};

class Office {
 public:
  explicit Office(const Saved& saved) : m_saved(saved), m_person(saved) {
    database::PrepareDatabase(m_text, database::Content::Demonstration);
    m_plain = database::CreateConnection(m_text);
    m_noting = std::make_unique<host::OfficeConnection>(database::CreateConnection(m_text), m_session);
    UsePlain();
    host::RegisterClasses(m_session);
    for (const entry::PublishedClass& published : entry::PublishedClasses()) {
      automation::RegisterClass(published.progId, published.create);
    }
    m_services = automation::CreateObject(u"KelAPI.cPrincipal"_s);
    m_bridge = std::make_unique<host::ComponentBridge>(*m_services, m_session);
  }

  void SaveWithoutLog() {
    UsePlain();
    Save();
  }
  void SaveWithLog() {
    UseNoting();
    Save();
  }
  void SaveWithLogAndRescue() {
    UseNoting();
    const host::Rescue rescue(*m_services, *m_bridge);
    Save();
    if (!rescue.Inputs().isEmpty()) {
      qFatal("a record was not saved");
    }
  }
  /// How many saves were noted.
  qsizetype Notes() { return host::ChangesAfter(*m_plain, 0, 10'000).size(); }

 private:
  void UsePlain() {
    m_session.connection = m_plain.get();
    m_session.office = nullptr;
  }
  void UseNoting() {
    m_session.connection = m_noting.get();
    m_session.office = m_noting.get();
  }
  void Save() {
    for (int i = 0; i < saves; ++i) {
      m_bridge->ShowDialog({.node = m_saved.node, .action = cConstAccion().Modificar(), .selectedId = 1});
    }
  }

  const Saved& m_saved;
  QTemporaryDir m_folder;
  QString m_text = database::ConnectionStringForFile(m_folder.filePath(u"kel.db"_s));
  host::Session m_session;
  std::unique_ptr<adodb::Connection> m_plain;
  std::unique_ptr<host::OfficeConnection> m_noting;
  std::unique_ptr<QObject> m_services;
  std::unique_ptr<host::ComponentBridge> m_bridge;
  Person m_person;
};

bool Bench(const Saved& saved) {
  Office office(saved);
  office.SaveWithLogAndRescue();
  std::vector<bench::Contestant> contestants{
      {"with the change log", [&] { office.SaveWithLog(); }},
      {"without it", [&] { office.SaveWithoutLog(); }},
      {"with the log, watched for what is typed", [&] { office.SaveWithLogAndRescue(); }},
  };
  bench::Race(contestants, rounds);
  constexpr int noted = saves * (2 * rounds + 1);
  if (office.Notes() != noted) {
    std::printf("%lld saves were noted instead of %d\n", static_cast<long long>(office.Notes()), noted);
    return false;
  }
  const double watched = bench::Median(contestants[2].milliseconds) - bench::Median(contestants[0].milliseconds);
  contestants.pop_back();
  bench::Report(qPrintable(u"%1 opened, changed and saved %2 times"_s.arg(QLatin1StringView(saved.name)).arg(saves)),
                contestants, {mostForLog});
  std::printf("What watches a dialog takes %.2f ms of each (at most %.0f)\n", watched / saves, mostForRescue);
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  return Bench({"A bank", cConstNodo().Bancos(), u"txtBanco_1"_s, u"cmdBanco_3"_s}) &&
                 Bench({"A country", cConstNodo().Paises(), u"txtPais"_s, u"cmdPais_0"_s})
             ? 0
             : 1;
}
