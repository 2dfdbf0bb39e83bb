#pragma once

#include "host/desktop/MainWindow.h"
#include "host/desktop/RecordList.h"
#include "host/records/ComponentBridge.h"
#include "host/records/OfficeConnection.h"
#include "host/records/Session.h"
#include "support/Driver.h"
#include "support/TestDatabase.h"

#include <QAction>
#include <QLineEdit>

#include <memory>

/// The host's window on a fresh database, with the program's own services and a driver for the boxes that appear.
class TestDesktop {
 public:
  explicit TestDesktop(database::Content content = database::Content::Reference);
  /// Warns of what the driver had to do that the test did not foresee.
  ~TestDesktop();

  QObject& Services() { return *m_services; }
  host::ComponentBridge& Bridge() { return *m_bridge; }
  /// Of the administrator "ana", until a test says otherwise.
  host::Session& Session() { return m_session; }
  /// The session's connection, beside which `database` looks at the file.
  host::OfficeConnection& Office() { return m_office; }
  host::MainWindow& Window();
  /// Ends the window and opens it anew, as a new start of the program.
  host::MainWindow& Restart();

  /// Chooses a node and waits for its list.
  void ChooseNode(int node);
  /// F5, until the list has been read.
  void Refresh();
  void WaitForTheList();

  host::RecordList& List();
  QLineEdit& SearchBox();
  QAction& Action(const char* name);
  /// The boxes since the last time, and what went otherwise than the driver was told.
  QStringList TakeBoxes() { return driver.TakeBoxes() + driver.TakeProblems(); }

  const support::TestDatabase database;
  support::Driver driver;

 private:
  host::Session m_session;
  host::OfficeConnection m_office;
  std::unique_ptr<QObject> m_services;
  std::unique_ptr<host::ComponentBridge> m_bridge;
  std::unique_ptr<host::MainWindow> m_window;
};
