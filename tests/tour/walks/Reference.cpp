#include "tour/Walks.h"

#include "platform/contract/cConstAccion.h"
#include "platform/contract/cConstNodo.h"

#include <QMessageBox>

using adodb::StatementText;
using support::DialogUser;
using namespace Qt::StringLiterals;

namespace tour {

namespace {

constexpr cConstNodo node;
constexpr cConstAccion action;

void WalkCountries(Tour& tour) {
  tour.Windows().On("frmPais", [&](const DialogUser& dialog) {
    dialog.Type("txtPais", u"Atlántida"_s);
    tour.Picture(dialog, u"frmPais"_s);
    dialog.Press("cmdPais_0");
  });
  tour.Step(u"Países: agregar"_s, {.node = node.Paises(), .action = action.Agregar()},
            u"SELECT Nombre FROM Paises WHERE Nombre='Atlántida'"_s, {u"Atlántida"_s});

  const int id = tour.Id(u"SELECT IDPais FROM Paises WHERE Nombre='Atlántida'");
  tour.Windows().On("frmPais", [](const DialogUser& dialog) {
    dialog.Type("txtPais", u"Atlántida d'Abajo"_s);
    dialog.Close();
  });
  tour.Windows().Answer(QMessageBox::Yes);
  tour.Step(u"Países: modificar, cerrar y guardar"_s, {.node = node.Paises(), .action = action.Modificar(), .id = id},
            StatementText(u"SELECT Nombre FROM Paises WHERE IDPais={}", id), {u"Atlántida d'Abajo"_s});
}

void WalkProvinces(Tour& tour) {
  tour.Windows().On("frmProvincia", [&](const DialogUser& dialog) {
    dialog.Press("cmdNuevoPais");
    dialog.Type("txtProvincia", u"Isla Grande"_s);
    tour.Picture(dialog, u"frmProvincia"_s);
    dialog.Press("cmdProvincia_0");
  });
  tour.Windows().On("frmPais", [](const DialogUser& dialog) {
    dialog.Type("txtPais", u"Lemuria"_s);
    dialog.Press("cmdPais_0");
  });
  tour.Step(u"Provincias: agregar, con país nuevo"_s, {.node = node.Provincias(), .action = action.Agregar()},
            u"SELECT Provincias.Nombre, Paises.Nombre FROM Provincias INNER JOIN Paises ON "
            "Provincias.CodPais=Paises.IDPais WHERE Provincias.Nombre='Isla Grande'"_s,
            {u"Isla Grande|Lemuria"_s});
}

}  // namespace

void WalkReference(Tour& tour) {
  WalkCountries(tour);
  WalkProvinces(tour);
}

}  // namespace tour
