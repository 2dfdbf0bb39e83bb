// Opening a sheet of 1,000 fields beside the same rows through the engine's C interface, and what a keystroke in a
// bounded box costs beside one in a plain box.

#include "database/Database.h"
#include "database/sqlite/SqliteHandle.h"
#include "framework/HostServices.h"
#include "host/services/Session.h"
#include "host/services/cPrincipal.h"
#include "labels/Dialogs.h"
#include "platform/adodb/Statement.h"
#include "support/Race.h"

#include <QApplication>
#include <QLineEdit>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <cstdlib>

using adodb::Execute;
using namespace Qt::StringLiterals;

namespace {

constexpr int fields = 1000;
constexpr int keystrokes = 1000;
constexpr int rounds = 7;

class Office {
 public:
  Office() {
    database::PrepareDatabase(m_text, database::Content::Reference);
    m_connection = database::CreateConnection(m_text);
    m_connection->Open();
    m_connection->BeginTrans();
    Execute(*m_connection,
            u"INSERT INTO ETIQUETAS(NOMBRE,NETIQUETASTOTAL,NETIQUETASANCHO,ENVIOPOSTAL) "
            u"VALUES('Grande',40,4,-1)");
    m_sheet = Execute(*m_connection, u"SELECT MAX(IDETIQUETA) AS N FROM ETIQUETAS")->Field(u"N").toInt();
    for (int i = 0; i < fields; ++i) {
      Execute(*m_connection,
              u"INSERT INTO EtiquetasCampos(codEtiqueta,NombreCampo,Disco,Linea,Orden,codTipoCampoEtiqueta) "
              u"VALUES({},'[COLABORADORES].[NOMBRE]',0,{},{},2)",
              m_sheet, i / 200 + 1, i % 200 + 1);
    }
    m_connection->CommitTrans();
    m_session.connection = m_connection.get();
    m_session.settingsFile = m_folder.filePath(u"ajustes.ini"_s);
    host::RegisterClasses(m_session);
    m_services = std::make_unique<host::cPrincipal>(m_session);
    m_services->setProperty("Accion", 2);
    m_services->setProperty("IDSeleccionado", m_sheet);
    objApi() = HostServices(m_services.get());
    m_native = std::make_unique<database::SqliteHandle>(database::ConnectionString(m_text),
                                                        database::SqliteHandle::Missing::Refuse);
  }

  std::unique_ptr<MaintenanceForm> Opened() const {
    std::unique_ptr<MaintenanceForm> dialog = CreateFrmEtiquetas1();
    dialog->Load();
    return dialog;
  }

  void ReadByCInterface() const {
    const QByteArray text =
        "SELECT EtiquetasCampos.IDEtiquetaCampo, EtiquetasCampos.Linea, EtiquetasCampos.Orden, "
        "EtiquetasCampos.NombreCampo, EtiquetasCampos.codTipoCampoEtiqueta, TipoCamposEtiquetas.codTabla FROM "
        "EtiquetasCampos LEFT JOIN TipoCamposEtiquetas ON "
        "EtiquetasCampos.codTipoCampoEtiqueta=TipoCamposEtiquetas.IDTipoCampoEtiqueta WHERE "
        "EtiquetasCampos.codEtiqueta=" +
        QByteArray::number(m_sheet) + " AND EtiquetasCampos.Disco=0";
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(m_native->Engine(), text.constData(), -1, &statement, nullptr) != SQLITE_OK) {
      std::abort();
    }
    qsizetype characters = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) {
      for (int column = 0; column < 6; ++column) {
        characters += QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)),
                                        sqlite3_column_bytes(statement, column))
                          .size();
      }
    }
    sqlite3_finalize(statement);
    if (characters == 0) {
      std::abort();
    }
  }

 private:
  QTemporaryDir m_folder;
  QString m_text = database::ConnectionStringForFile(m_folder.filePath(u"kel.db"_s));
  std::unique_ptr<adodb::Connection> m_connection;
  std::unique_ptr<database::SqliteHandle> m_native;
  host::Session m_session;
  std::unique_ptr<host::cPrincipal> m_services;
  int m_sheet = 0;
};

void Write(QLineEdit& box) {
  for (int i = 0; i < keystrokes; ++i) {
    box.setText(i % 2 == 0 ? u"7,5"_s : u"8,25"_s);
  }
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const Office office;
  std::vector<bench::Contestant> opening{
      {"the dialog: load, fields, change tracking, unload", [&] { office.Opened()->Unload(); }},
      {"the rows of its fields through the C interface", [&] { office.ReadByCInterface(); }},
  };
  bench::Race(opening, rounds);
  bench::Report("Opening a sheet of 1,000 fields", opening, {10.0});

  const auto dialog = office.Opened();
  auto* bounded = dialog->findChild<QLineEdit*>(u"txtMedidas_0"_s);
  QLineEdit plain;
  std::vector<bench::Contestant> typing{
      {"a bounded box: bounds, rows, sheet, words", [&] { Write(*bounded); }},
      {"a plain box", [&] { Write(plain); }},
  };
  bench::Race(typing, rounds);
  bench::Report("1,000 changes of a box", typing, {20.0});
  return 0;
}
