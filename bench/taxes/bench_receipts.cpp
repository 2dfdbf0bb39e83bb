// A new receipt text for a million donations, beside the native statement.

#include "support/Office.h"
#include "support/Race.h"
#include "taxes/Dialogs.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>

using namespace framework;
using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 7;

void Fill(const database::SqliteHandle& native) {
  native.Run(
      "INSERT INTO TipoDonativos (Nombre, CodTipoDeduccionFisica, CodTipoDeduccionJuridica) VALUES ('Becas', 2, 4);"
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 1000000) "
      "INSERT INTO Donativos (CodColaborador, CodTipoDonativo, Importe, TextoRecibo) "
      "SELECT i % 100000 + 1, 1, 10, 'Donativo para becas de estudio' FROM n; ANALYZE");
}

std::unique_ptr<MaintenanceForm> WithNewText(int round) {
  std::unique_ptr<MaintenanceForm> dialog = taxes::CreateFrmTipoDonativo();
  dialog->Load();
  dialog->findChild<QLineEdit*>(u"txtTipoDonativo_1"_s)->setText(u"Donativo para becas, %1"_s.arg(round));
  return dialog;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const bench::Office office;
  Fill(office.Native());
  office.Select(1);
  std::vector<std::unique_ptr<MaintenanceForm>> dialogs;
  for (int round = 0; round < rounds; ++round) {
    dialogs.push_back(WithNewText(round));
  }
  int round = 0;
  std::vector<bench::Contestant> changing{
      {"Accept",
       [&] {
         dialogs.back()->findChild<QPushButton*>(u"cmdTipoDonativo_0"_s)->click();
         dialogs.pop_back();
       }},
      {"the statement through the C interface",
       [&] {
         office.Native().Run("UPDATE Donativos SET TextoRecibo='Donativo para libros, " + QByteArray::number(++round) +
                             "' WHERE CodTipoDonativo = 1");
       }},
  };
  bench::Race(changing, rounds);
  bench::Report("A new receipt text for a million donations", changing, {1.1});
  return 0;
}
