#pragma once

#include "host/desktop/ComponentBridge.h"
#include "host/desktop/MainWindow.h"
#include "host/desktop/RecordList.h"
#include "host/services/Session.h"

#include <QAction>
#include <QLineEdit>
#include <QTemporaryDir>

#include <memory>

/// The host's window on a fresh database in a folder of its own, with the program's own services.
class TestDesktop {
 public:
  /// `demonstration` fills the database with the invented organisation, too.
  explicit TestDesktop(bool demonstration = false);
  ~TestDesktop();

  adodb::Connection& Connection() { return *m_connection; }
  host::ComponentBridge& Bridge() { return *m_bridge; }
  host::MainWindow& Window();
  /// Ends the window and opens it anew, as a new start of the program.
  host::MainWindow& Restart();

  host::RecordList& List();
  QLineEdit& SearchBox();
  QAction& Action(const char* name);
  QString Path(const QString& name) const { return m_folder.filePath(name); }

  void Execute(const QString& statement);
  QVariant Value(const QString& statement);

 private:
  QTemporaryDir m_folder;
  std::unique_ptr<adodb::Connection> m_connection;
  host::Session m_session;
  std::unique_ptr<QObject> m_services;
  std::unique_ptr<host::ComponentBridge> m_bridge;
  std::unique_ptr<host::MainWindow> m_window;
};
