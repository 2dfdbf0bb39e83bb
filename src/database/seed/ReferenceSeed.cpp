#include "database/seed/Seed.h"
#include "database/seed/SeedTable.h"

namespace database {

void SeedReference(adodb::Connection& connection) {
  struct File {
    QString table;
    QString name;
  };
  const File files[] = {
      {QStringLiteral("Paises"), QStringLiteral("paises.tsv")},
      {QStringLiteral("Provincias"), QStringLiteral("provincias.tsv")},
      {QStringLiteral("ComunidadAutonoma"), QStringLiteral("comunidades.tsv")},
      {QStringLiteral("Diocesis"), QStringLiteral("diocesis.tsv")},
      {QStringLiteral("TipoDeducciones"), QStringLiteral("deducciones.tsv")},
      {QStringLiteral("TipoSuscripciones"), QStringLiteral("suscripciones.tsv")},
      {QStringLiteral("Encabezados"), QStringLiteral("encabezados.tsv")},
      {QStringLiteral("TipoCamposEtiquetas"), QStringLiteral("campos_etiquetas.tsv")},
      {QStringLiteral("Usuarios"), QStringLiteral("usuarios.tsv")},
      {QStringLiteral("configuracion"), QStringLiteral("configuracion.tsv")},
  };
  for (const File& file : files) {
    InsertSeedFile(connection, file.table, file.name);
  }
}

}  // namespace database
