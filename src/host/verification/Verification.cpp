#include "host/verification/Verification.h"

#include "host/verification/CheckBench.h"
#include "platform/automation/ComponentLibrary.h"

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

// How many of the members are faulty.
int Run(const std::vector<MemberCheck>& checks) {
  int faults = 0;
  for (const MemberCheck& check : checks) {
    Print(check.member.leftJustified(36));
    const QString fault = FaultOf(check);
    Print((fault.isEmpty() ? u"bien"_s : fault) + u'\n');
    faults += fault.isEmpty() ? 0 : 1;
  }
  return faults;
}

}  // namespace

bool VerifyServices(const QString& library, const QString& progId, int& argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const automation::ComponentLibrary component(QFileInfo(library).absoluteFilePath());
  const std::unique_ptr<QObject> object = component.CreateObject(progId);
  CheckBench bench;
  const bool isListHelper = progId.endsWith(u"cListas"_s, Qt::CaseInsensitive);
  const std::vector<MemberCheck> checks = isListHelper ? ListChecks(*object, bench) : ServiceChecks(*object, bench);
  const int faults = Run(checks);
  Print(u"\n%1: %2 miembros, %3 con faltas\n"_s.arg(progId).arg(checks.size()).arg(faults));
  return faults == 0;
}

}  // namespace host
