// A publication with a million subscriptions: opening it beside its summary query, and changing the price of all of
// them beside the two native statements.

#include "publications/Dialogs.h"
#include "support/Office.h"
#include "support/Race.h"

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

using namespace framework;
using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 7;

// Ten subscriptions each, one subscriber of ten lives abroad.
void Fill(const database::SqliteHandle& native) {
  native.Run(
      "INSERT INTO TipoPublicaciones (Nombre, ImporteNacional, ImporteExtranjero) VALUES ('Boletín', 10, 20);"
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 100000) "
      "INSERT INTO Colaboradores (Nombre, codpais) SELECT 'Nombre ' || i, CASE WHEN i % 10 = 0 THEN 70 ELSE 35 END "
      "FROM "
      "n;"
      "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 999999) "
      "INSERT INTO Suscripciones (CodColaborador, CodTipoPublicacion, CodTipoSuscripcion, NumeroEjemplares, Importe) "
      "SELECT i % 100000 + 1, 1, i % 5 + 1, i % 3 + 1, 10 FROM n; ANALYZE");
}

void OpenByDialog() {
  const auto dialog = publications::CreateFrmPublicacion();
  dialog->Load();
  dialog->Unload();
}

const QByteArray summary =
    "SELECT TipoSuscripciones.IDTipoSuscripcion, TipoSuscripciones.Nombre AS Suscripcion, COUNT(*) AS Contador, "
    "SUM(Suscripciones.Importe) AS ImporteTotal FROM (Suscripciones INNER JOIN TipoSuscripciones ON "
    "Suscripciones.CodTipoSuscripcion = TipoSuscripciones.IDTipoSuscripcion) INNER JOIN TipoPublicaciones ON "
    "Suscripciones.CodTipoPublicacion = TipoPublicaciones.IDTipoPublicacion WHERE Suscripciones.Eliminado = 0 AND "
    "TipoSuscripciones.Eliminado = 0 AND TipoPublicaciones.Eliminado = 0 AND TipoPublicaciones.IDTipoPublicacion = 1 "
    "GROUP BY TipoSuscripciones.IDTipoSuscripcion, TipoSuscripciones.Nombre";

std::unique_ptr<MaintenanceForm> WithNewPrices(int round) {
  std::unique_ptr<MaintenanceForm> dialog = publications::CreateFrmPublicacion();
  dialog->Load();
  dialog->findChild<QLineEdit*>(u"txtPrecioNac"_s)->setText(u"%1,50"_s.arg(10 + round));
  dialog->findChild<QLineEdit*>(u"txtPrecioExt"_s)->setText(u"%1,50"_s.arg(20 + round));
  dialog->findChild<QCheckBox*>(u"chkPublicacion"_s)->setChecked(true);
  return dialog;
}

void SetPricesNatively(const database::SqliteHandle& native, int round) {
  native.Run("BEGIN IMMEDIATE");
  for (const auto& [price, comparison] : {std::pair(10 + round, "="), std::pair(20 + round, "<>")}) {
    native.Run(
        "UPDATE Suscripciones SET Importe = NumeroEjemplares * " + QByteArray::number(price) +
        ".5 WHERE IDSuscripcion IN (SELECT Suscripciones.IDSuscripcion FROM Colaboradores INNER JOIN (Suscripciones "
        "INNER JOIN TipoPublicaciones ON Suscripciones.CodTipoPublicacion = TipoPublicaciones.IDTipoPublicacion) ON "
        "Colaboradores.IDColaborador = Suscripciones.CodColaborador WHERE CodPais " +
        comparison + " 35 AND IDTipoPublicacion = 1)");
  }
  native.Run("COMMIT");
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const bench::Office office;
  Fill(office.Native());
  office.Select(1);

  std::vector<bench::Contestant> opening{
      {"the dialog: load, lock, grid, change tracking, unload", OpenByDialog},
      {"the summary query through the C interface", [&] { office.ReadNative(summary); }},
  };
  bench::Race(opening, rounds);
  bench::Report("Opening a publication with a million subscriptions", opening, {1.2});

  std::vector<std::unique_ptr<MaintenanceForm>> dialogs;
  for (int round = 0; round < rounds; ++round) {
    dialogs.push_back(WithNewPrices(round));
  }
  int round = 0;
  std::vector<bench::Contestant> changing{
      {"Accept",
       [&] {
         dialogs.back()->findChild<QPushButton*>(u"cmdPublicacion_0"_s)->click();
         dialogs.pop_back();
       }},
      {"the two statements through the C interface", [&] { SetPricesNatively(office.Native(), ++round); }},
  };
  bench::Race(changing, rounds);
  bench::Report("New prices for a million subscriptions", changing, {1.1});
  return 0;
}
