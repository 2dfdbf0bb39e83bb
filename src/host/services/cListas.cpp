#include "host/services/cListas.h"

#include "host/records/OpenConnection.h"
#include "host/services/ComboFilling.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <QComboBox>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

using adodb::StatementText;
using adodb::Verbatim;

namespace host {
namespace {

// Entity and branch numbers are written with this many digits.
constexpr qsizetype codeLength = 4;

struct CodedTable {
  QString table;
  QString idColumn;
  QString codeColumn;
};

CodedTable CodedTableOf(const QVariant& idColumn) {
  const CodedTable tables[] = {
      {u"Bancos"_s, u"IDBanco"_s, u"Numero"_s},
      {u"Sucursales"_s, u"IDSucursal"_s, u"Codigo"_s},
  };
  for (const CodedTable& table : tables) {
    if (table.idColumn.compare(automation::Text(idColumn), Qt::CaseInsensitive) == 0) {
      return table;
    }
  }
  throw automation::Error(automation::InvalidProcedureCall);
}

bool IsSelect(const QString& origin) {
  static const QRegularExpression select(u"\\A\\s*SELECT\\s"_s, QRegularExpression::CaseInsensitiveOption);
  return select.match(origin).hasMatch();
}

int IdOrZero(const QVariant& id) {
  return automation::IsNull(id) || !automation::IsNumeric(id) ? 0 : automation::CLng(id);
}

}  // namespace

cListas::cListas(Session& session) : m_session(session) {}

void cListas::RellenarCombo(QObject* combo, const QString& origen, const QString& columnaTexto,
                            const QString& columnaId, bool vaciar) {
  const QString statement = IsSelect(origen)
                                ? origen
                                : StatementText(u"SELECT {0},{1} FROM {2} ORDER BY {0}", Verbatim{columnaTexto},
                                                Verbatim{columnaId}, Verbatim{origen});
  FillCombo(ComboFrom(combo), Connection(nullptr), statement, columnaTexto, columnaId, vaciar);
}

void cListas::RellenarComboPais(adodb::Connection* conexion, QObject* combo, const QVariant& id, bool vaciar) {
  FillWithNames(conexion, combo, u"SELECT IDPais,Nombre FROM Paises WHERE Eliminado=0 ORDER BY Nombre"_s, u"IDPais"_s,
                id, vaciar);
}

void cListas::RellenarComboProvincias(adodb::Connection* conexion, QObject* combo, const QVariant& idPais,
                                      const QVariant& id, bool vaciar) {
  FillWithNames(
      conexion, combo,
      StatementText(u"SELECT IDProvincia,Nombre FROM Provincias WHERE Eliminado=0 AND CodPais={} ORDER BY Nombre",
                    IdOrZero(idPais)),
      u"IDProvincia"_s, id, vaciar);
}

void cListas::rellenarcombobancos(QObject* combo, adodb::Connection* conexion, const QVariant& id, bool vaciar) {
  FillWithNames(conexion, combo, u"SELECT IDBanco,Nombre FROM Bancos WHERE Eliminado=0 ORDER BY Nombre"_s, u"IDBanco"_s,
                id, vaciar);
}

void cListas::rellenarcombosucursales(QObject* combo, const QVariant& idBanco, adodb::Connection* conexion,
                                      const QVariant& id, bool vaciar) {
  FillWithNames(
      conexion, combo,
      StatementText(u"SELECT IDSucursal,Nombre FROM Sucursales WHERE Eliminado=0 AND codBanco={} ORDER BY Nombre",
                    IdOrZero(idBanco)),
      u"IDSucursal"_s, id, vaciar);
}

void cListas::FillWithNames(adodb::Connection* connection, QObject* combo, const QString& statement,
                            const QString& idColumn, const QVariant& id, bool clear) const {
  QComboBox& list = ComboFrom(combo);
  FillCombo(list, Connection(connection), statement, u"Nombre"_s, idColumn, clear);
  SelectById(list, id);
}

void cListas::LocalizarElementoLista(QObject* combo, const QVariant& id) {
  SelectById(ComboFrom(combo), id);
}

QString cListas::CargarBancoSucursalCaja(const QVariant& campoID, int /*reservado*/, int id) {
  const CodedTable table = CodedTableOf(campoID);
  const auto rows = adodb::Execute(Connection(nullptr), u"SELECT {} FROM {} WHERE {}={}", Verbatim{table.codeColumn},
                                   Verbatim{table.table}, Verbatim{table.idColumn}, id);
  return rows->AtEnd() ? QString() : automation::Text(rows->Field(0));
}

void cListas::CargarBancoSucursalLista(QObject* combo, const QVariant& campoID, const QVariant& texto,
                                       int /*reservado*/) {
  QComboBox& list = ComboFrom(combo);
  const CodedTable table = CodedTableOf(campoID);
  const QString code = automation::Text(texto).trimmed();
  const auto rows = adodb::Execute(Connection(nullptr), u"SELECT {} FROM {} WHERE Eliminado=0 AND {} IN ('{}','{}')",
                                   Verbatim{table.idColumn}, Verbatim{table.table}, Verbatim{table.codeColumn}, code,
                                   code.rightJustified(codeLength, u'0'));
  bool selected = false;
  for (; !code.isEmpty() && !selected && !rows->AtEnd(); rows->MoveNext()) {
    selected = SelectById(list, rows->Field(0));
  }
  if (!selected) {
    list.setCurrentIndex(-1);
  }
}

adodb::Connection& cListas::Connection(adodb::Connection* given) const {
  return Opened(given != nullptr ? given : m_session.connection);
}

}  // namespace host
