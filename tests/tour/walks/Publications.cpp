#include "tour/Walks.h"

#include <QCheckBox>
#include <QMessageBox>

using adodb::StatementText;
using support::DialogUser;
using namespace Qt::StringLiterals;

namespace tour {

void WalkPublications(Tour& tour) {
  tour.Windows().On("frmPublicacion", [&](const DialogUser& dialog) {
    dialog.Press("cmdPublicacion_0");
    dialog.Type("txtPublicacion", u"L'Infinit"_s);
    dialog.Type("txtTextoRecibo", u"Suscripción anual"_s);
    dialog.Type("txtPrecioNac", u"1234.5"_s);
    dialog.Type("txtPrecioExt", u"1500"_s);
    tour.Picture(dialog, u"frmPublicacion"_s);
    dialog.Press("cmdPublicacion_0");
  });
  tour.Windows().Answer(QMessageBox::Ok);
  tour.Step(u"Publicaciones: sin nombre no; agregar"_s, {.node = node.Publicaciones(), .action = action.Agregar()},
            u"SELECT ImporteNacional, ImporteExtranjero FROM TipoPublicaciones WHERE Nombre='L''Infinit'"_s,
            {u"1234,5|1500"_s});

  const int id = tour.Id(u"SELECT MIN(IDTipoPublicacion) AS N FROM TipoPublicaciones");
  tour.Windows().On("frmPublicacion", [&](const DialogUser& dialog) {
    dialog.Type("txtPrecioNac", u"15"_s);
    dialog.Type("txtPrecioExt", u"20,5"_s);
    dialog.Find<QCheckBox>("chkPublicacion")->click();
    tour.Picture(dialog, u"frmPublicacion-modificar"_s);
    dialog.Press("cmdPublicacion_0");
  });
  tour.Windows().Answer(QMessageBox::Yes);
  tour.Step(u"Publicaciones: precios a las suscripciones"_s,
            {.node = node.Publicaciones(), .action = action.Modificar(), .id = id},
            StatementText(u"SELECT DISTINCT Importe/NumeroEjemplares AS Precio FROM Suscripciones INNER JOIN "
                          u"Colaboradores ON Suscripciones.CodColaborador=Colaboradores.IDColaborador WHERE "
                          u"CodTipoPublicacion={} ORDER BY Importe/NumeroEjemplares",
                          id),
            {u"15"_s, u"20,5"_s});
}

}  // namespace tour
