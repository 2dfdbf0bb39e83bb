#include "tour/Walks.h"

#include <QCheckBox>
#include <QMessageBox>

using adodb::StatementText;
using support::DialogUser;
using namespace Qt::StringLiterals;

namespace tour {

namespace {

void WalkPercentages(Tour& tour) {
  tour.Windows().On("frmTipoDeduccion", [&](const DialogUser& dialog) {
    dialog.Type("txtDeduccion", u"80"_s);
    dialog.Press("cmdDeduccion_0");
    dialog.Type("txtDeduccion", u"101"_s);
    dialog.Press("cmdDeduccion_0");
    dialog.Type("txtDeduccion", u"66%"_s);
    tour.Picture(dialog, u"frmTipoDeduccion"_s);
    dialog.Press("cmdDeduccion_0");
  });
  tour.Windows().Answer(QMessageBox::Ok);
  tour.Windows().Answer(QMessageBox::Ok);
  const QString query = u"SELECT Porcentaje FROM TipoDeducciones WHERE Porcentaje IN (66,67)"_s;
  tour.Step(u"Deducciones: repetida no, 101 no, 66"_s, {.node = node.TipoDeduccion(), .action = action.Agregar()},
            query, {u"66"_s});
  const int id = tour.Id(u"SELECT IDTipoDeduccion FROM TipoDeducciones WHERE Porcentaje=66");
  tour.Windows().On("frmTipoDeduccion", [](const DialogUser& dialog) {
    dialog.Type("txtDeduccion", u"67"_s);
    dialog.Press("cmdDeduccion_0");
  });
  tour.Step(u"Deducciones: modificar"_s, {.node = node.TipoDeduccion(), .action = action.Modificar(), .id = id}, query,
            {u"67"_s});
}

void WalkCommunities(Tour& tour) {
  tour.Windows().On("frmComunidadAutonoma", [&](const DialogUser& dialog) {
    dialog.Type("txtComunidad", u"Comunitat d'Enlloc"_s);
    dialog.Press("cmdAceptar");
    dialog.Type("txtCodigo", u"9a9"_s);
    tour.Picture(dialog, u"frmComunidadAutonoma"_s);
    dialog.Press("cmdAceptar");
  });
  tour.Windows().Answer(QMessageBox::Ok);
  const QString query = u"SELECT Nombre, Codigo FROM ComunidadAutonoma WHERE Nombre='Comunitat d''Enlloc'"_s;
  tour.Step(u"Comunidades: sin código no; agregar"_s, {.node = node.ComunidadAutonoma(), .action = action.Agregar()},
            query, {u"Comunitat d'Enlloc|99"_s});
  const int id = tour.Id(u"SELECT MAX(IDComunidad) AS N FROM ComunidadAutonoma");
  tour.Windows().On("frmComunidadAutonoma", [](const DialogUser& dialog) {
    dialog.Type("txtCodigo", u"98"_s);
    dialog.Press("cmdAceptar");
  });
  tour.Step(u"Comunidades: modificar"_s, {.node = node.ComunidadAutonoma(), .action = action.Modificar(), .id = id},
            query, {u"Comunitat d'Enlloc|98"_s});
}

void WalkCommunityDeductions(Tour& tour) {
  tour.Windows().On("frmDeduccionComunidad", [&](const DialogUser& dialog) {
    dialog.Choose("cboComunidad", u"Comunitat d'Enlloc"_s);
    dialog.Press("cmdAceptar");
    dialog.Press("cmdDeduccion");
    tour.Picture(dialog, u"frmDeduccionComunidad"_s);
    dialog.Press("cmdAceptar");
  });
  tour.Windows().Answer(QMessageBox::Ok);
  tour.Windows().On("frmTipoDeduccion", [](const DialogUser& dialog) {
    dialog.Type("txtDeduccion", u"12"_s);
    dialog.Press("cmdDeduccion_0");
  });
  const QString query =
      u"SELECT ComunidadAutonoma.Nombre, TipoDeducciones.Porcentaje FROM (Deduccion_Comunidad INNER JOIN "
      "ComunidadAutonoma ON Deduccion_Comunidad.CodComunidad=ComunidadAutonoma.IDComunidad) INNER JOIN TipoDeducciones "
      "ON Deduccion_Comunidad.CodDeduccion=TipoDeducciones.IDTipoDeduccion WHERE "
      "ComunidadAutonoma.Nombre='Comunitat d''Enlloc'"_s;
  tour.Step(u"Deducción de comunidad: con porcentaje nuevo"_s,
            {.node = node.DeduccionesComunidad(), .action = action.Agregar()}, query, {u"Comunitat d'Enlloc|12"_s});
  const int id = tour.Id(u"SELECT MAX(IDDeduccion_Comunidad) AS N FROM Deduccion_Comunidad");
  tour.Windows().On("frmDeduccionComunidad", [](const DialogUser& dialog) {
    dialog.Choose("cboDeduccion", u"20"_s);
    dialog.Press("cmdAceptar");
  });
  tour.Step(u"Deducción de comunidad: modificar"_s,
            {.node = node.DeduccionesComunidad(), .action = action.Modificar(), .id = id}, query,
            {u"Comunitat d'Enlloc|20"_s});
}

void WalkDonationTypes(Tour& tour) {
  tour.Windows().On("frmTipoDonativo", [&](const DialogUser& dialog) {
    dialog.Press("cmdTipoDonativo_0");
    dialog.Find<QCheckBox>("chkTipoDonativo")->click();
    dialog.Press("cmdAgregar_1");
    dialog.Type("txtTipoDonativo_0", u"Ermita de Santa Ana"_s);
    dialog.Find<QCheckBox>("chkRecibo")->click();
    dialog.Type("txtTipoDonativo_1", u"Donativo para la ermita"_s);
    tour.Picture(dialog, u"frmTipoDonativo"_s);
    dialog.Press("cmdTipoDonativo_0");
  });
  tour.Windows().Answer(QMessageBox::Ok);
  tour.Windows().On("frmTipoDeduccion", [](const DialogUser& dialog) {
    dialog.Type("txtDeduccion", u"13"_s);
    dialog.Press("cmdDeduccion_0");
  });
  tour.Step(u"Tipos de donativo: con deducción nueva"_s, {.node = node.TipoDonativos(), .action = action.Agregar()},
            u"SELECT Fisica.Porcentaje, Juridica.Porcentaje, TextoRecibo, Modelo182, GenerarRecibo FROM (TipoDonativos "
            "INNER JOIN TipoDeducciones AS Fisica ON CodTipoDeduccionFisica=Fisica.IDTipoDeduccion) INNER JOIN "
            "TipoDeducciones AS Juridica ON CodTipoDeduccionJuridica=Juridica.IDTipoDeduccion WHERE "
            "Nombre='Ermita de Santa Ana'"_s,
            {u"25|13|Donativo para la ermita|Falso|Verdadero"_s});

  const int id = tour.Id(u"SELECT IDTipoDonativo FROM TipoDonativos WHERE Nombre='Becas de estudio'");
  tour.Windows().On("frmTipoDonativo", [&](const DialogUser& dialog) {
    dialog.Type("txtTipoDonativo_1", u"Donativo para becas y libros"_s);
    tour.Picture(dialog, u"frmTipoDonativo-modificar"_s);
    dialog.Press("cmdTipoDonativo_0");
  });
  tour.Windows().Answer(QMessageBox::Yes);
  tour.Step(u"Tipos de donativo: texto a todos los donativos"_s,
            {.node = node.TipoDonativos(), .action = action.Modificar(), .id = id},
            StatementText(u"SELECT DISTINCT TextoRecibo FROM Donativos WHERE CodTipoDonativo={}", id),
            {u"Donativo para becas y libros"_s});
}

}  // namespace

void WalkTaxes(Tour& tour) {
  WalkPercentages(tour);
  WalkCommunities(tour);
  WalkCommunityDeductions(tour);
  WalkDonationTypes(tour);
}

}  // namespace tour
