#include "tour/Walks.h"

#include <QMessageBox>

using adodb::StatementText;
using support::DialogUser;
using namespace Qt::StringLiterals;

namespace tour {

namespace {

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

void WalkDioceses(Tour& tour) {
  tour.Windows().On("frmDiocesis", [&](const DialogUser& dialog) {
    dialog.Press("cmdDiocesis_0");
    dialog.Press("cmdNProvincia");
    dialog.Type("txtDiocesis", u"Diócesis d'Ultramar"_s);
    tour.Picture(dialog, u"frmDiocesis"_s);
    dialog.Press("cmdDiocesis_0");
  });
  tour.Windows().Answer(QMessageBox::Ok);
  tour.Windows().On("frmProvincia", [](const DialogUser& dialog) {
    dialog.Choose("cboPais", u"Lemuria"_s);
    dialog.Type("txtProvincia", u"Isla Chica"_s);
    dialog.Press("cmdProvincia_0");
  });
  const QString query =
      u"SELECT Diocesis.Nombre, Provincias.Nombre AS Provincia FROM Diocesis LEFT JOIN Provincias ON "
      "Diocesis.CodProvincia=Provincias.IDProvincia WHERE Diocesis.Nombre='Diócesis d''Ultramar'"_s;
  tour.Step(u"Diócesis: sin nombre no; con provincia nueva"_s, {.node = node.Diocesis(), .action = action.Agregar()},
            query, {u"Diócesis d'Ultramar|Isla Chica"_s});

  const int id = tour.Id(u"SELECT MAX(IDDiocesis) AS N FROM Diocesis");
  tour.Windows().On("frmDiocesis", [](const DialogUser& dialog) {
    dialog.Choose("cboProvincia", u"Cuenca"_s);
    dialog.Press("cmdDiocesis_0");
  });
  tour.Step(u"Diócesis: modificar"_s, {.node = node.Diocesis(), .action = action.Modificar(), .id = id}, query,
            {u"Diócesis d'Ultramar|Cuenca"_s});
}

}  // namespace

void WalkReference(Tour& tour) {
  WalkCountries(tour);
  WalkProvinces(tour);
  WalkDioceses(tour);
}

}  // namespace tour
