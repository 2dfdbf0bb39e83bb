#include "tour/Walks.h"

#include <QMessageBox>
#include <QTableView>

using support::DialogUser;
using namespace Qt::StringLiterals;

namespace tour {

namespace {

void FillBranch(const DialogUser& dialog, const char* code, const QString& name, const char* postcode) {
  dialog.Type("txtSucursales_0", QString::fromLatin1(code));
  dialog.Type("txtSucursales_1", name);
  dialog.Type("txtSucursales_4", QString::fromLatin1(postcode));
  dialog.Find("txtSucursales_2")->setFocus(Qt::TabFocusReason);
}

}  // namespace

void WalkBanking(Tour& tour) {
  tour.Windows().On("frmBanco", [&](const DialogUser& dialog) {
    dialog.Type("txtBanco_0", u"9991"_s);
    dialog.Type("txtBanco_1", u"Banco del Recorrido"_s);
    for (int i = 0; i < 3; ++i) {
      dialog.Press("cmdBanco_0");
    }
    tour.Picture(dialog, u"frmBanco"_s);
    dialog.Press("cmdBanco_3");
  });
  const QStringList names{u"Centro"_s, u"L'Eixample"_s, u"Triana"_s};
  const char* const codes[] = {"0001", "0002", "0003"};
  const char* const postcodes[] = {"28013", "08007", "41010"};
  for (int i = 0; i < 3; ++i) {
    tour.Windows().On("frmSucursal", [&tour, &names, &codes, &postcodes, i](const DialogUser& dialog) {
      FillBranch(dialog, codes[i], names[i], postcodes[i]);
      if (i == 1) {
        tour.Picture(dialog, u"frmSucursal"_s);
      }
      dialog.Press("cmdSucursales_0");
    });
  }
  const QString query =
      u"SELECT Sucursales.Codigo, Sucursales.Nombre, Provincias.Nombre AS Provincia, Sucursales.Eliminado FROM "
      "(Sucursales INNER JOIN Bancos ON Sucursales.codBanco=Bancos.IDBanco) INNER JOIN Provincias ON "
      "Sucursales.codProvincia=Provincias.IDProvincia WHERE Bancos.Numero='9991' ORDER BY Sucursales.Codigo"_s;
  tour.Step(u"Bancos: agregar con tres sucursales"_s, {.node = node.Bancos(), .action = action.Agregar()}, query,
            {u"0001|Centro|Madrid|Falso"_s, u"0002|L'Eixample|Barcelona|Falso"_s, u"0003|Triana|Sevilla|Falso"_s});

  const int bank = tour.Id(u"SELECT IDBanco FROM Bancos WHERE Numero='9991'");
  tour.Windows().On("frmBanco", [&](const DialogUser& dialog) {
    auto* grid = dialog.Find<QTableView>("msgSucursales");
    grid->selectRow(0);
    dialog.Press("cmdBanco_1");
    grid->selectRow(2);
    dialog.Press("cmdBanco_2");
    tour.Picture(dialog, u"frmBanco-modificar"_s);
    dialog.Press("cmdBanco_3");
  });
  tour.Windows().On("frmSucursal", [](const DialogUser& dialog) {
    dialog.Type("txtSucursales_1", u"Puerta del Sol"_s);
    dialog.Press("cmdSucursales_0");
  });
  tour.Windows().Answer(QMessageBox::Yes);
  tour.Step(u"Bancos: cambiar una sucursal, eliminar otra"_s,
            {.node = node.Bancos(), .action = action.Modificar(), .id = bank}, query,
            {u"0001|Puerta del Sol|Madrid|Falso"_s, u"0002|L'Eixample|Barcelona|Falso"_s,
             u"0003|Triana|Sevilla|Verdadero"_s});

  tour.Windows().On("frmSucursal", [](const DialogUser& dialog) {
    FillBranch(dialog, "0004", u"Casco Viejo"_s, "48005");
    dialog.Press("cmdSucursales_0");
  });
  tour.Step(u"Sucursales: agregar desde el árbol"_s,
            {.node = node.Sucursales(), .action = action.Agregar(), .aux = bank}, query + u" DESC"_s,
            {u"0004|Casco Viejo|Bizkaia|Falso"_s, u"0003|Triana|Sevilla|Verdadero"_s,
             u"0002|L'Eixample|Barcelona|Falso"_s, u"0001|Puerta del Sol|Madrid|Falso"_s});
}

}  // namespace tour
