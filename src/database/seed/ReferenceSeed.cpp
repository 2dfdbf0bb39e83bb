#include "database/seed/Seed.h"
#include "database/seed/SeedTable.h"

using namespace Qt::StringLiterals;

namespace database {

void SeedReference(adodb::Connection& connection) {
  struct File {
    QString table;
    QString name;
  };
  const File files[] = {
      {u"Paises"_s, u"paises.tsv"_s},
      {u"Provincias"_s, u"provincias.tsv"_s},
      {u"ComunidadAutonoma"_s, u"comunidades.tsv"_s},
      {u"Diocesis"_s, u"diocesis.tsv"_s},
      {u"TipoDeducciones"_s, u"deducciones.tsv"_s},
      {u"TipoSuscripciones"_s, u"suscripciones.tsv"_s},
      {u"Encabezados"_s, u"encabezados.tsv"_s},
      {u"TipoCamposEtiquetas"_s, u"campos_etiquetas.tsv"_s},
      {u"Usuarios"_s, u"usuarios.tsv"_s},
      {u"configuracion"_s, u"configuracion.tsv"_s},
  };
  for (const File& file : files) {
    InsertSeedFile(connection, file.table, file.name);
  }
}

}  // namespace database
