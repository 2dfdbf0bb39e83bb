#include "database/seed/Seed.h"
#include "database/seed/SeedTable.h"
#include "platform/adodb/Statement.h"

using namespace Qt::StringLiterals;

namespace database {

void SeedReference(adodb::Connection& connection) {
  for (const QString& table : {u"Paises"_s, u"Provincias"_s, u"ComunidadAutonoma"_s, u"Diocesis"_s,
                               u"TipoDeducciones"_s, u"TipoSuscripciones"_s, u"Encabezados"_s, u"TipoCamposEtiquetas"_s,
                               u"Usuarios"_s, u"configuracion"_s, u"ProvinciasComunidades"_s}) {
    InsertSeedFile(connection, u"reference"_s, table);
  }
}

void SeedWhatIsNew(adodb::Connection& connection, int fromVersion) {
  constexpr int mailing = 6;
  if (fromVersion >= mailing) {
    return;
  }
  adodb::Execute(connection,
                 u"UPDATE Encabezados SET Nombre='Estimado/a amigo/a:' WHERE Nombre='Estimado amigo, estimada amiga:'");
  InsertSeedFile(connection, u"reference"_s, u"ProvinciasComunidades"_s);
  adodb::Execute(connection,
                 u"DELETE FROM ProvinciasComunidades WHERE codProvincia NOT IN (SELECT IDProvincia FROM Provincias) OR "
                 u"CodComunidad NOT IN (SELECT IDComunidad FROM ComunidadAutonoma)");
}

}  // namespace database
