#include "host/verification/Verification.h"

#include "host/verification/CheckBench.h"
#include "host/verification/ConnectionChecks.h"
#include "host/verification/TimeLimit.h"
#include "platform/automation/ComponentLibrary.h"
#include "platform/automation/Error.h"
#include "platform/automation/Invoke.h"

#include <QApplication>
#include <QFileInfo>

#include <cstdio>

namespace host {

using namespace Qt::StringLiterals;

namespace {

void Print(const QString& text) {
  std::fputs(text.toUtf8().constData(), stdout);
  std::fflush(stdout);
}

// How many of the checks found a fault. `width`: of the column of their names.
int Run(const std::vector<MemberCheck>& checks, int width, std::chrono::seconds limit) {
  int faults = 0;
  for (const MemberCheck& check : checks) {
    Print(check.member.leftJustified(width));
    const TimeLimit end(limit, u"no vuelve: han pasado %1 s y aquí se termina\n"_s.arg(limit.count()));
    const QString fault = FaultOf(check);
    Print((fault.isEmpty() ? u"bien"_s : fault) + u'\n');
    faults += fault.isEmpty() ? 0 : 1;
  }
  return faults;
}

// The connection of a services object, open; null when it has none.
adodb::Connection* OpenConnectionOf(QObject& services) {
  auto* connection = automation::Get(&services, "congestion").value<adodb::Connection*>();
  if (connection != nullptr && connection->State() == adodb::StateClosed) {
    connection->Open();
  }
  return connection;
}

// The services object of the same library that a list helper goes with, where there is one.
std::unique_ptr<QObject> ServicesBeside(const automation::ComponentLibrary& component, QString listHelper) {
  try {
    return component.CreateObject(listHelper.replace(u"cListas"_s, u"cPrincipal"_s, Qt::CaseInsensitive));
  } catch (const automation::Error&) {
    return nullptr;
  }
}

bool Report(const QString& progId, std::size_t checks, const QString& what, int faults) {
  Print(u"\n%1: %2 %3, %4 con faltas\n"_s.arg(progId).arg(checks).arg(what).arg(faults));
  return faults == 0;
}

}  // namespace

bool VerifyServices(const Verified& verified, int& argc, char** argv) {
  constexpr int width = 36;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const automation::ComponentLibrary component(QFileInfo(verified.library).absoluteFilePath());
  const std::unique_ptr<QObject> object = component.CreateObject(verified.progId);
  const std::unique_ptr<QObject> second = component.CreateObject(verified.progId);
  CheckBench bench;
  std::vector<MemberCheck> checks;
  std::unique_ptr<QObject> services;
  if (verified.progId.endsWith(u"cListas"_s, Qt::CaseInsensitive)) {
    services = ServicesBeside(component, verified.progId);
    checks = ListChecks(*object, services != nullptr ? OpenConnectionOf(*services) : nullptr, bench);
  } else {
    checks = ServiceChecks(*object, *second, bench);
  }
  return Report(verified.progId, checks.size(), u"miembros"_s, Run(checks, width, verified.limit));
}

bool VerifyConnection(const Verified& verified, int& argc, char** argv) {
  constexpr int width = 100;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const automation::ComponentLibrary component(QFileInfo(verified.library).absoluteFilePath());
  const std::unique_ptr<QObject> services = component.CreateObject(verified.progId);
  adodb::Connection* connection = OpenConnectionOf(*services);
  if (connection == nullptr) {
    throw automation::Error(automation::ObjectNotSet, u"«%1» no tiene conexión (congestion)"_s.arg(verified.progId));
  }
  const std::vector<MemberCheck> checks = ConnectionChecks(*connection);
  return Report(verified.progId, checks.size(), u"sentencias"_s, Run(checks, width, verified.limit));
}

}  // namespace host
