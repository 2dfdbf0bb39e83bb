#include "tour/Walks.h"

#include <QMessageBox>

using adodb::StatementText;
using support::DialogUser;
using namespace Qt::StringLiterals;

namespace tour {

namespace {

void WalkHeaders(Tour& tour) {
  tour.Windows().On("frmCabecera", [&](const DialogUser& dialog) {
    dialog.Press("cmdBotonera_0");
    dialog.Type("txtNombre", u"Carta de agradecimiento"_s);
    dialog.Type("txtLinea_0", u"Fundación l'Esperança"_s);
    dialog.Type("txtLinea_1", u"Plaza Mayor, 1"_s);
    tour.Picture(dialog, u"frmCabecera"_s);
    dialog.Press("cmdBotonera_0");
  });
  tour.Windows().Answer(QMessageBox::Ok);
  const QString query =
      u"SELECT Linea1, Linea2, Linea5 FROM Cabeceras WHERE Nombre='Carta de agradecimiento' AND Eliminado=0"_s;
  tour.Step(u"Cabeceras: sin nombre no; agregar"_s, {.node = node.Cabeceras(), .action = action.Agregar()}, query,
            {u"Fundación l'Esperança|Plaza Mayor, 1|"_s});
  const int id = tour.Id(u"SELECT MAX(IDCabecera) AS N FROM Cabeceras");
  tour.Windows().On("frmCabecera", [](const DialogUser& dialog) {
    dialog.Type("txtLinea_4", u"28013 Madrid"_s);
    dialog.Press("cmdBotonera_0");
  });
  tour.Step(u"Cabeceras: modificar"_s, {.node = node.Cabeceras(), .action = action.Modificar(), .id = id}, query,
            {u"Fundación l'Esperança|Plaza Mayor, 1|28013 Madrid"_s});
}

void WalkSalutations(Tour& tour) {
  const int id = tour.Id(u"SELECT IDEncabezado FROM Encabezados WHERE Descripcion='Sacerdote'");
  tour.Windows().On("frmEncabezado", [&](const DialogUser& dialog) {
    dialog.Type("txtEncabezado", u" "_s);
    dialog.Press("cmdEncabezado_0");
    dialog.Type("txtEncabezado", u"Benvolgut mossèn d'aquí:"_s);
    tour.Picture(dialog, u"frmEncabezado"_s);
    dialog.Press("cmdEncabezado_0");
  });
  tour.Windows().Answer(QMessageBox::Ok);
  tour.Step(u"Encabezados: vacío no; modificar"_s,
            {.node = node.Encabezados().toInt(), .action = action.Modificar(), .id = id},
            StatementText(u"SELECT Descripcion, Nombre FROM Encabezados WHERE IDEncabezado={}", id),
            {u"Sacerdote|Benvolgut mossèn d'aquí:"_s});
}

}  // namespace

void WalkLetters(Tour& tour) {
  WalkHeaders(tour);
  WalkSalutations(tour);
}

}  // namespace tour
