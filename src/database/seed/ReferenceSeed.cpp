#include "database/seed/Seed.h"
#include "database/seed/SeedTable.h"

using namespace Qt::StringLiterals;

namespace database {

void SeedReference(adodb::Connection& connection) {
  for (const QString& table :
       {u"Paises"_s, u"Provincias"_s, u"ComunidadAutonoma"_s, u"Diocesis"_s, u"TipoDeducciones"_s,
        u"TipoSuscripciones"_s, u"Encabezados"_s, u"TipoCamposEtiquetas"_s, u"Usuarios"_s, u"configuracion"_s}) {
    InsertSeedFile(connection, u"reference"_s, table);
  }
}

}  // namespace database
