#pragma once

#include "support/Driver.h"
#include "support/RecordingConnection.h"
#include "support/TestDatabase.h"

#include "framework/Desktop.h"
#include "host/records/Session.h"
#include "host/services/cPrincipal.h"
#include "platform/automation/Error.h"

#include <optional>

namespace support {

/// The desktop of a test: real message boxes, counted beeps, as many printers as the test wants.
class CountingDesktop : public framework::Desktop {
 public:
  CountingDesktop() { Install(this); }
  CountingDesktop(const CountingDesktop&) = delete;
  CountingDesktop& operator=(const CountingDesktop&) = delete;
  ~CountingDesktop() override { Install(nullptr); }

  void Beep() override { ++beeps; }
  int PrinterCount() override { return printers; }
  void SetMousePointer(framework::MousePointer pointer) override { pointers.append(pointer); }
  void ShowHelp(const QString& file, const QString& title) override;

  int beeps = 0;
  int printers = 0;
  QList<int> pointers;
  QStringList helpShown;
};

/// A host for tests: a fresh database of reference data, the services, the component's class, a driver for the
/// windows that open. The connection is the reference host's own, closed between requests, as a host finds it.
class TestHost : public TestDatabase {
 public:
  explicit TestHost(database::Content content = database::Content::Reference);
  /// On a database that another host made.
  explicit TestHost(const QString& connectionString);
  TestHost(const TestHost&) = delete;
  TestHost& operator=(const TestHost&) = delete;
  ~TestHost();

  /// PasarDatos for a node, through the published class by name. What it lets out is returned.
  std::optional<automation::Error> PasarDatos(int node, int action, int id = 0, const QVariant& aux = 0);
  std::optional<automation::Error> EliminarRegistro(int node, int id);

  host::Session session;
  RecordingConnection& Recording() { return *m_recording; }
  host::cPrincipal& services() { return *m_services; }
  Driver driver;
  CountingDesktop desktop;

 private:
  std::optional<automation::Error> Call(const char* method);
  void Start();
  static void End(QDialog& dialog);

  std::unique_ptr<adodb::Connection> m_real;
  std::unique_ptr<RecordingConnection> m_recording;
  std::unique_ptr<host::cPrincipal> m_services;
};

}  // namespace support
