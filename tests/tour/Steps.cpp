#include "tour/Tour.h"

#include <QMessageBox>
#include <QTableView>

using support::DialogUser;

namespace tour {

namespace {

constexpr int agregar = 1;
constexpr int modificar = 2;

constexpr int sucursales = 0;
constexpr int bancos = 19;
constexpr int paises = 20;
constexpr int provincias = 22;

void WalkCountries(Tour& tour) {
  tour.Windows().On("frmPais", [&](const DialogUser& dialog) {
    dialog.Type("txtPais", QStringLiteral("Atlántida"));
    tour.Picture(dialog, QStringLiteral("frmPais"));
    dialog.Press("cmdPais_0");
  });
  tour.Step(QStringLiteral("Países: agregar"), {.node = paises, .action = agregar},
            QStringLiteral("SELECT Nombre FROM Paises WHERE Nombre='Atlántida'"), {QStringLiteral("Atlántida")});

  const int id = tour.Id(QStringLiteral("SELECT IDPais FROM Paises WHERE Nombre='Atlántida'"));
  tour.Windows().On("frmPais", [](const DialogUser& dialog) {
    dialog.Type("txtPais", QStringLiteral("Atlántida d'Abajo"));
    dialog.Close();
  });
  tour.Windows().Answer(QMessageBox::Yes);
  tour.Step(QStringLiteral("Países: modificar, cerrar y guardar"), {.node = paises, .action = modificar, .id = id},
            QStringLiteral("SELECT Nombre FROM Paises WHERE IDPais=%1").arg(id), {QStringLiteral("Atlántida d'Abajo")});
}

void WalkProvinces(Tour& tour) {
  tour.Windows().On("frmProvincia", [&](const DialogUser& dialog) {
    dialog.Press("cmdNuevoPais");
    dialog.Type("txtProvincia", QStringLiteral("Isla Grande"));
    tour.Picture(dialog, QStringLiteral("frmProvincia"));
    dialog.Press("cmdProvincia_0");
  });
  tour.Windows().On("frmPais", [](const DialogUser& dialog) {
    dialog.Type("txtPais", QStringLiteral("Lemuria"));
    dialog.Press("cmdPais_0");
  });
  tour.Step(QStringLiteral("Provincias: agregar, con país nuevo"), {.node = provincias, .action = agregar},
            QStringLiteral("SELECT Provincias.Nombre, Paises.Nombre FROM Provincias INNER JOIN Paises ON "
                           "Provincias.CodPais=Paises.IDPais WHERE Provincias.Nombre='Isla Grande'"),
            {QStringLiteral("Isla Grande|Lemuria")});
}

void FillBranch(const DialogUser& dialog, const char* code, const QString& name, const char* postcode) {
  dialog.Type("txtSucursales_0", QString::fromLatin1(code));
  dialog.Type("txtSucursales_1", name);
  dialog.Type("txtSucursales_4", QString::fromLatin1(postcode));
  dialog.Find("txtSucursales_2")->setFocus(Qt::TabFocusReason);
}

void WalkBanks(Tour& tour) {
  tour.Windows().On("frmBanco", [&](const DialogUser& dialog) {
    dialog.Type("txtBanco_0", QStringLiteral("9991"));
    dialog.Type("txtBanco_1", QStringLiteral("Banco del Recorrido"));
    for (int i = 0; i < 3; ++i) {
      dialog.Press("cmdBanco_0");
    }
    tour.Picture(dialog, QStringLiteral("frmBanco"));
    dialog.Press("cmdBanco_3");
  });
  const QStringList names{QStringLiteral("Centro"), QStringLiteral("L'Eixample"), QStringLiteral("Triana")};
  const char* const codes[] = {"0001", "0002", "0003"};
  const char* const postcodes[] = {"28013", "08007", "41010"};
  for (int i = 0; i < 3; ++i) {
    tour.Windows().On("frmSucursal", [&tour, &names, &codes, &postcodes, i](const DialogUser& dialog) {
      FillBranch(dialog, codes[i], names[i], postcodes[i]);
      if (i == 1) {
        tour.Picture(dialog, QStringLiteral("frmSucursal"));
      }
      dialog.Press("cmdSucursales_0");
    });
  }
  const QString query = QStringLiteral(
      "SELECT Sucursales.Codigo, Sucursales.Nombre, Provincias.Nombre AS Provincia, Sucursales.Eliminado FROM "
      "(Sucursales INNER JOIN Bancos ON Sucursales.codBanco=Bancos.IDBanco) INNER JOIN Provincias ON "
      "Sucursales.codProvincia=Provincias.IDProvincia WHERE Bancos.Numero='9991' ORDER BY Sucursales.Codigo");
  tour.Step(QStringLiteral("Bancos: agregar con tres sucursales"), {.node = bancos, .action = agregar}, query,
            {QStringLiteral("0001|Centro|Madrid|Falso"), QStringLiteral("0002|L'Eixample|Barcelona|Falso"),
             QStringLiteral("0003|Triana|Sevilla|Falso")});

  const int bank = tour.Id(QStringLiteral("SELECT IDBanco FROM Bancos WHERE Numero='9991'"));
  tour.Windows().On("frmBanco", [&](const DialogUser& dialog) {
    auto* grid = dialog.Find<QTableView>("msgSucursales");
    grid->selectRow(0);
    dialog.Press("cmdBanco_1");
    grid->selectRow(2);
    dialog.Press("cmdBanco_2");
    tour.Picture(dialog, QStringLiteral("frmBanco-modificar"));
    dialog.Press("cmdBanco_3");
  });
  tour.Windows().On("frmSucursal", [](const DialogUser& dialog) {
    dialog.Type("txtSucursales_1", QStringLiteral("Puerta del Sol"));
    dialog.Press("cmdSucursales_0");
  });
  tour.Windows().Answer(QMessageBox::Yes);
  tour.Step(QStringLiteral("Bancos: cambiar una sucursal, eliminar otra"),
            {.node = bancos, .action = modificar, .id = bank}, query,
            {QStringLiteral("0001|Puerta del Sol|Madrid|Falso"), QStringLiteral("0002|L'Eixample|Barcelona|Falso"),
             QStringLiteral("0003|Triana|Sevilla|Verdadero")});

  tour.Windows().On("frmSucursal", [](const DialogUser& dialog) {
    FillBranch(dialog, "0004", QStringLiteral("Casco Viejo"), "48005");
    dialog.Press("cmdSucursales_0");
  });
  tour.Step(QStringLiteral("Sucursales: agregar desde el árbol"), {.node = sucursales, .action = agregar, .aux = bank},
            query + QStringLiteral(" DESC"),
            {QStringLiteral("0004|Casco Viejo|Bizkaia|Falso"), QStringLiteral("0003|Triana|Sevilla|Verdadero"),
             QStringLiteral("0002|L'Eixample|Barcelona|Falso"), QStringLiteral("0001|Puerta del Sol|Madrid|Falso")});
}

void WalkDeletions(Tour& tour) {
  const int spain = tour.Id(QStringLiteral("SELECT IDPais FROM Paises WHERE Nombre='España'"));
  tour.Windows().Answer(QMessageBox::Ok);
  tour.Step(QStringLiteral("Eliminar un país en uso: se rechaza"), {.node = paises, .id = spain, .deletes = true},
            QStringLiteral("SELECT Eliminado FROM Paises WHERE IDPais=%1").arg(spain), {QStringLiteral("Falso")});
  const int bank = tour.Id(QStringLiteral("SELECT IDBanco FROM Bancos WHERE Numero='9991'"));
  tour.Step(QStringLiteral("Eliminar un banco con sus sucursales"), {.node = bancos, .id = bank, .deletes = true},
            QStringLiteral("SELECT DISTINCT Eliminado FROM Sucursales WHERE codBanco=%1").arg(bank),
            {QStringLiteral("Verdadero")});
}

// The nodes whose dialogs this version does not have answer with one message each.
void WalkTheRest(Tour& tour) {
  for (const int node : {15, 16, 17, 18, 21, 25, 26, 27, 30, 32, 34, 35, 36}) {
    tour.Windows().Answer(QMessageBox::Ok);
    tour.Step(QStringLiteral("Nodo %1: un mensaje").arg(node), {.node = node, .action = modificar, .id = 1}, {}, {});
  }
}

}  // namespace

void WalkEverything(Tour& tour) {
  WalkCountries(tour);
  WalkProvinces(tour);
  WalkBanks(tour);
  WalkDeletions(tour);
  WalkTheRest(tour);
}

}  // namespace tour
