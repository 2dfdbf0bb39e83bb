#include "LongLists.h"

#include "database/Database.h"
#include "platform/adodb/Statement.h"

namespace bench {

std::unique_ptr<adodb::Connection> MakeLongLists(const QString& connectionString) {
  database::PrepareDatabase(connectionString, database::Content::Reference);
  auto connection = database::CreateConnection(connectionString);
  connection->Open();
  connection->BeginTrans();
  for (int i = 0; i < longList; ++i) {
    const adodb::Verbatim number{QString::number(i)};
    adodb::Execute(*connection, u"INSERT INTO Provincias(Nombre,CodPais,Prefijo) VALUES('Población número {}',35,'28')",
                   number);
    adodb::Execute(*connection, u"INSERT INTO Cabeceras(Nombre) VALUES('Cabecera número {}')", number);
  }
  connection->CommitTrans();
  return connection;
}

}  // namespace bench
