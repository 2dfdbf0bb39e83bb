#include "tour/Walks.h"

#include <QMessageBox>

using adodb::StatementText;
using namespace Qt::StringLiterals;

namespace tour {

void WalkDeletions(Tour& tour) {
  const int spain = tour.Id(u"SELECT IDPais FROM Paises WHERE Nombre='España'");
  tour.Windows().Answer(QMessageBox::Ok);
  tour.Step(u"Eliminar un país en uso: se rechaza"_s, {.node = node.Paises(), .id = spain, .deletes = true},
            StatementText(u"SELECT Eliminado FROM Paises WHERE IDPais={}", spain), {u"Falso"_s});
  const int bank = tour.Id(u"SELECT IDBanco FROM Bancos WHERE Numero='9991'");
  tour.Step(u"Eliminar un banco con sus sucursales"_s, {.node = node.Bancos(), .id = bank, .deletes = true},
            StatementText(u"SELECT DISTINCT Eliminado FROM Sucursales WHERE codBanco={}", bank), {u"Verdadero"_s});
}

}  // namespace tour
