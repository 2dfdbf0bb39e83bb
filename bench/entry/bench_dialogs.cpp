// Every dialog from its creation until it is painted, beside what it can't do without: its statements through the
// engine's C interface and a bare window with the same controls and the same rows, in turns.

#include "banking/BranchEditing.h"
#include "entry/Dispatch.h"
#include "entry/WindowCopy.h"
#include "labels/FieldCollection.h"
#include "labels/FieldEditing.h"
#include "platform/adodb/Statement.h"
#include "support/FirstPaint.h"
#include "support/Office.h"
#include "support/Race.h"

#include <QApplication>

#include <algorithm>
#include <cstdio>
#include <optional>

using adodb::Execute;
using namespace Qt::StringLiterals;

namespace {

constexpr int banks = 3000;
constexpr int branches = 10'000;
constexpr int presenters = 5000;

using Opening = std::function<void()>;

// Names that do not come in the order of their keys.
QString Name(const QString& kind, int i) {
  return u"%1 %2"_s.arg(kind).arg(i * 7919 % 10007);
}

QString Code(int i) {
  return QString::number(i).rightJustified(4, u'0');
}

class BigOffice : public bench::Office {
 public:
  BigOffice() : Office(database::Content::Demonstration) {
    adodb::Transaction transaction(Connection());
    for (int i = 1; i < banks; ++i) {
      Execute(Connection(), u"INSERT INTO Bancos(Numero,Nombre) VALUES('{}','{}')", u'B' + Code(i),
              Name(u"Banco"_s, i));
    }
    Execute(Connection(), u"INSERT INTO Bancos(Numero,Nombre) VALUES('9999','Grande')");
    m_bank = Execute(Connection(), u"SELECT MAX(IDBanco) AS N FROM Bancos")->Field(0).toInt();
    for (int i = 0; i < branches; ++i) {
      Execute(Connection(),
              u"INSERT INTO Sucursales(codBanco,Codigo,Nombre,Direccion,Poblacion,CP,codProvincia,codPais) "
              u"VALUES({},'{}','{}','Calle de la Constitución, {}','Alcalá','28801',28,35)",
              m_bank, Code(i), Name(u"Oficina"_s, i), Code(i));
    }
    for (int i = 0; i < presenters; ++i) {
      Execute(Connection(),
              u"INSERT INTO Presentadores(Nombre,Nif,Sufijo,CodBanco,CodSucursal) VALUES('{}','A11111119','000',1,1)",
              Name(u"Presentador"_s, i));
    }
    transaction.Commit();
  }

  int BigBank() const { return m_bank; }

 private:
  int m_bank = 0;
};

// What several rounds took.
class Series {
 public:
  void Add(const bench::Elapsed& elapsed) {
    m_clock.push_back(elapsed.clock);
    m_processor.push_back(elapsed.processor);
  }
  double Clock() const { return bench::Median(m_clock); }
  double Processor() const { return bench::Median(m_processor); }

 private:
  std::vector<double> m_clock;
  std::vector<double> m_processor;
};

struct Times {
  Series dialog;
  Series statements;
  Series window;
};

Times Measure(const BigOffice& office, const Opening& open, int rounds) {
  std::optional<bench::WindowCopy> copy;
  const QList<QByteArray> statements = office.StatementsOf(
      [&] { bench::FirstPaint::Measure(open, [&](const QDialog& dialog) { copy.emplace(dialog); }); });
  Times times;
  for (int round = 0; round < rounds; ++round) {
    times.dialog.Add(bench::FirstPaint::Measure(open));
    const bench::Stopwatch reading;
    office.RunNative(statements);
    times.statements.Add(reading.Read());
    // The lock, as the dialog's end does it.
    office.Native().Run("DELETE FROM BloqueoRegistros");
    std::unique_ptr<QDialog> bare;
    times.window.Add(bench::FirstPaint::Measure([&] {
      bare = copy->Make();
      bare->exec();
    }));
  }
  return times;
}

class Report {
 public:
  Report(const BigOffice& office, const QString& only, int rounds) : m_office(office), m_only(only), m_rounds(rounds) {
    std::printf("| dialog | ms | statements | bare window | ratio | ratio by processor |\n|---|---|---|---|---|---|\n");
  }

  void Row(const QString& what, const Opening& open) const {
    if (!what.contains(m_only)) {
      return;
    }
    const Times times = Measure(m_office, open, m_rounds);
    const double statements = times.statements.Clock();
    const double window = times.window.Clock();
    std::printf("| %s | %.2f | %.2f | %.2f | %.2f | %.2f |\n", qPrintable(what), times.dialog.Clock(), statements,
                window, times.dialog.Clock() / (statements + window),
                times.dialog.Processor() / (times.statements.Processor() + times.window.Processor()));
    std::fflush(stdout);
  }

 private:
  const BigOffice& m_office;
  QString m_only;
  int m_rounds;
};

Opening OpeningOf(const QString& dialog) {
  const auto create = std::ranges::find(entry::dispatch::Table(), dialog, &entry::dispatch::Entry::dialog)->create;
  return [create] { create()->ShowModal(); };
}

void MeasureDispatched(const BigOffice& office, const Report& report) {
  QStringList seen{u"frmSucursal"_s};
  for (const entry::dispatch::Entry& entry : entry::dispatch::Table()) {
    if (!seen.contains(entry.dialog)) {
      seen.append(entry.dialog);
      office.Select(1);
      report.Row(entry.dialog, OpeningOf(entry.dialog));
    }
  }
  office.Select(office.BigBank());
  report.Row(u"frmBanco, 10,000 branches"_s, OpeningOf(u"frmBanco"_s));
  office.Add();
  report.Row(u"frmBanco, new"_s, OpeningOf(u"frmBanco"_s));
  report.Row(u"frmCartaModelo, new"_s, OpeningOf(u"frmCartaModelo"_s));
  office.Add(1);
  report.Row(u"frmSucursal, new"_s, OpeningOf(u"frmSucursal"_s));
}

// The dialogs that only another dialog opens.
void MeasureInner(const BigOffice& office, const Report& report) {
  office.Select(1);
  report.Row(u"frmSucursal, of the bank dialog"_s, [] {
    banking::cSucursal branch;
    const banking::BranchCollection none;
    banking::EditBranch(
        {.branch = branch, .branches = none, .isNew = true, .bankNumber = u"0001"_s, .bankName = u"Uno"_s});
  });
  QWidget sheet;
  report.Row(u"frmEtiquetas2"_s, [&sheet] {
    labels::FieldCollection fields;
    labels::EditFields(fields, sheet);
  });
}

}  // namespace

// bench_dialogs [part of a row's name] [rounds]
int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  const BigOffice office;
  const Report report(office, arguments.value(1), arguments.value(2, u"31"_s).toInt());
  MeasureDispatched(office, report);
  MeasureInner(office, report);
  return 0;
}
