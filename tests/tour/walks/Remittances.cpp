#include "tour/Walks.h"

#include <QMessageBox>

using adodb::StatementText;
using support::DialogUser;
using namespace Qt::StringLiterals;

namespace tour {

namespace {

void FillParty(const DialogUser& dialog, const QString& name, const char* taxIdentifier, const char* suffix) {
  dialog.Type("txtNombre", name);
  dialog.Type("txtNIF", QString::fromLatin1(taxIdentifier));
  dialog.Type("txtSufijo", QString::fromLatin1(suffix));
}

void WalkPresenters(Tour& tour) {
  tour.Windows().On("frmPresentador", [&](const DialogUser& dialog) {
    FillParty(dialog, u"Cáritas del Recorrido"_s, "G-99000010", "7");
    dialog.Type("txtNEntidad", u"9101"_s);
    dialog.Choose("cboSucursales", u"Soria Centro"_s);
    tour.Picture(dialog, u"frmPresentador"_s);
    dialog.Press("cmdAceptar");
  });
  tour.Step(u"Presentadores: banco por número, sucursal por lista"_s,
            {.node = node.Presentadores(), .action = action.Agregar()},
            u"SELECT Presentadores.Nif, Presentadores.Sufijo, Bancos.Nombre, Sucursales.Codigo FROM (Presentadores "
            "INNER JOIN Bancos ON Presentadores.CodBanco=Bancos.IDBanco) INNER JOIN Sucursales ON "
            "Presentadores.CodSucursal=Sucursales.IDSucursal WHERE Presentadores.Nombre='Cáritas del Recorrido'"_s,
            {u"G-99000010|007|Banco del Almendro|0027"_s});

  const int id = tour.Id(u"SELECT IDPresentador FROM Presentadores WHERE Sufijo='007'");
  tour.Windows().On("frmPresentador", [&](const DialogUser& dialog) {
    dialog.Choose("cboBancos", u"Banca Marítima del Levante"_s);
    dialog.Type("txtNSucursal", u"105"_s);
    dialog.Type("txtSufijo", u"1"_s);
    dialog.Press("cmdAceptar");
  });
  tour.Windows().Answer(QMessageBox::Yes);
  tour.Step(u"Presentadores: otro banco, sufijo repetido"_s,
            {.node = node.Presentadores(), .action = action.Modificar(), .id = id},
            StatementText(u"SELECT Sufijo, CodBanco, CodSucursal FROM Presentadores WHERE IDPresentador={}", id),
            {u"001|3|7"_s});
}

void WalkIssuers(Tour& tour) {
  tour.Windows().On("frmEmisor", [&](const DialogUser& dialog) {
    FillParty(dialog, u"L'Eixample Solidari"_s, "G99000011", "9");
    dialog.Choose("cboPresentadores", u"Gestoría Ribera Norte - Banco Cantábrico de Crédito"_s);
    dialog.Type("txtDireccion", u"Carrer d'Aragó, 200"_s);
    dialog.Type("txtPoblacion", u"Barcelona"_s);
    dialog.Type("txtCP", u"08011"_s);
    dialog.Press("cmdEmisor_0");
    dialog.Type("txtNIF", u"G99000010"_s);
    tour.Picture(dialog, u"frmEmisor"_s);
    dialog.Press("cmdEmisor_0");
  });
  tour.Windows().Answer(QMessageBox::Ok);
  tour.Step(u"Emisores: dígito de control corregido"_s, {.node = node.Emisores(), .action = action.Agregar()},
            u"SELECT Emisores.Cif, Emisores.Sufijo, Emisores.CP, Provincias.Nombre FROM Emisores INNER JOIN Provincias "
            "ON Emisores.CodProvincia=Provincias.IDProvincia WHERE Emisores.Nombre='L''Eixample Solidari'"_s,
            {u"G99000010|009|08011|Barcelona"_s});
}

void WalkCollectors(Tour& tour) {
  tour.Windows().On("frmCobrador", [&](const DialogUser& dialog) {
    dialog.Type("txtCobrador_0", u"Ana"_s);
    dialog.Type("txtCobrador_1", u"O'Donnell"_s);
    dialog.Type("txtCobrador_3", u"1234567"_s);
    dialog.Type("txtCobrador_5", u"Olot"_s);
    tour.Picture(dialog, u"frmCobrador"_s);
    dialog.Press("cmdLetra");
    dialog.Press("cmdCobrador_0");
  });
  const QString query = u"SELECT Nombre, Apellido1, NIF, Eliminado FROM Cobradores WHERE Poblacion='Olot'"_s;
  tour.Step(u"Colectoras: la letra del NIF, ofrecida"_s, {.node = node.Cobradores(), .action = action.Agregar()}, query,
            {u"Ana|O'Donnell|01234567L|Falso"_s});

  const int id = tour.Id(u"SELECT IDCobrador FROM Cobradores WHERE Poblacion='Olot'");
  tour.Windows().On("frmCobrador", [](const DialogUser& dialog) {
    dialog.Type("txtCobrador_0", u"Eva"_s);
    dialog.Press("cmdCobrador_0");
  });
  tour.Step(u"Colectoras: modificar"_s, {.node = node.Cobradores(), .action = action.Modificar(), .id = id}, query,
            {u"Eva|O'Donnell|01234567L|Falso"_s});
  tour.Step(u"Colectoras: eliminar"_s, {.node = node.Cobradores(), .id = id, .deletes = true}, query,
            {u"Eva|O'Donnell|01234567L|Verdadero"_s});
}

void WalkDeletedParties(Tour& tour) {
  const int issuer = tour.Id(u"SELECT IDEmisor FROM Emisores WHERE Sufijo='009'");
  tour.Windows().Answer(QMessageBox::Ok);
  tour.Step(u"Eliminar un presentador en uso: se rechaza"_s, {.node = node.Presentadores(), .id = 2, .deletes = true},
            u"SELECT Eliminado FROM Presentadores WHERE IDPresentador=2"_s, {u"Falso"_s});
  tour.Step(u"Eliminar un emisor"_s, {.node = node.Emisores(), .id = issuer, .deletes = true},
            StatementText(u"SELECT Eliminado FROM Emisores WHERE IDEmisor={}", issuer), {u"Verdadero"_s});
}

// Two countries, for the first of the list counts as none; then the bank and its branch, for the presenter.
void CreateEverythingForAnIssuer(Tour& tour) {
  for (const QString& country : {u"Andorra"_s, u"España"_s}) {
    tour.Windows().On("frmPais", [country](const DialogUser& dialog) {
      dialog.Type("txtPais", country);
      dialog.Press("cmdPais_0");
    });
  }
  tour.Windows().On("frmProvincia", [](const DialogUser& dialog) {
    dialog.Type("txtProvincia", u"Madrid"_s);
    dialog.Press("cmdProvincia_0");
  });
  tour.Windows().On("frmPresentador", [&](const DialogUser& dialog) {
    dialog.Press("cmdNuevoBanco_0");
    dialog.Press("cmdNuevoBanco_1");
    FillParty(dialog, u"Cáritas"_s, "G99000010", "1");
    tour.Picture(dialog, u"frmPresentador-desde-cero"_s);
    dialog.Press("cmdAceptar");
  });
  tour.Windows().On("frmBanco", [](const DialogUser& dialog) {
    dialog.Type("txtBanco_0", u"0049"_s);
    dialog.Type("txtBanco_1", u"Banco Nuevo"_s);
    dialog.Press("cmdBanco_3");
  });
  tour.Windows().On("frmSucursal", [](const DialogUser& dialog) {
    dialog.Type("txtSucursales_0", u"0001"_s);
    dialog.Type("txtSucursales_1", u"Centro"_s);
    dialog.Press("cmdSucursales_0");
  });
}

void WalkFromNothing(Tour& tour) {
  tour.Windows().On("frmEmisor", [&](const DialogUser& dialog) {
    dialog.Press("cmdNPais");
    dialog.Press("cmdNPais");
    dialog.Press("cmdNProvincia");
    dialog.Press("cmdNPresentador");
    FillParty(dialog, u"Parroquia de Nada"_s, "R9900001J", "1");
    tour.Picture(dialog, u"frmEmisor-desde-cero"_s);
    dialog.Press("cmdEmisor_0");
  });
  CreateEverythingForAnIssuer(tour);
  tour.Step(u"Emisores: desde una base de datos vacía"_s, {.node = node.Emisores(), .action = action.Agregar()},
            u"SELECT Emisores.Nombre, Emisores.Sufijo, Presentadores.Nombre, Presentadores.Sufijo, Bancos.Numero, "
            "Sucursales.Codigo, Sucursales.codBanco, Provincias.Nombre, Paises.Nombre FROM ((((Emisores INNER JOIN "
            "Presentadores ON Emisores.CodPresentador=Presentadores.IDPresentador) INNER JOIN Bancos ON "
            "Presentadores.CodBanco=Bancos.IDBanco) INNER JOIN Sucursales ON "
            "Presentadores.CodSucursal=Sucursales.IDSucursal) INNER JOIN Provincias ON "
            "Emisores.CodProvincia=Provincias.IDProvincia) INNER JOIN Paises ON Provincias.CodPais=Paises.IDPais"_s,
            {u"Parroquia de Nada|001|Cáritas|001|0049|0001|1|Madrid|España"_s});
}

}  // namespace

void WalkRemittances(Tour& tour) {
  WalkPresenters(tour);
  WalkIssuers(tour);
  WalkCollectors(tour);
  WalkDeletedParties(tour);
  tour.OnAnEmptyDatabase([&] { WalkFromNothing(tour); });
}

}  // namespace tour
