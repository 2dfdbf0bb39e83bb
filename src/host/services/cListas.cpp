#include "host/services/cListas.h"

#include "host/services/ComboFilling.h"
#include "host/services/Statements.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <QComboBox>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

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

QString SortedTable(const QString& table, const QString& textColumn, const QString& idColumn) {
  return u"SELECT %1,%2 FROM %3 ORDER BY %1"_s.arg(textColumn, idColumn, table);
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
  const QString statement = IsSelect(origen) ? origen : SortedTable(origen, columnaTexto, columnaId);
  FillCombo(ComboFrom(combo), Connection(nullptr), statement, columnaTexto, columnaId, vaciar);
}

void cListas::RellenarComboPais(adodb::Connection* conexion, QObject* combo, const QVariant& id, bool vaciar) {
  FillWithNames(conexion, combo, {u"Paises"_s, u"IDPais"_s}, id, vaciar);
}

void cListas::RellenarComboProvincias(adodb::Connection* conexion, QObject* combo, const QVariant& idPais,
                                      const QVariant& id, bool vaciar) {
  FillWithNames(conexion, combo, {u"Provincias"_s, u"IDProvincia"_s, u" AND CodPais=%1"_s.arg(IdOrZero(idPais))}, id,
                vaciar);
}

void cListas::rellenarcombobancos(QObject* combo, adodb::Connection* conexion, const QVariant& id, bool vaciar) {
  FillWithNames(conexion, combo, {u"Bancos"_s, u"IDBanco"_s}, id, vaciar);
}

void cListas::rellenarcombosucursales(QObject* combo, const QVariant& idBanco, adodb::Connection* conexion,
                                      const QVariant& id, bool vaciar) {
  FillWithNames(conexion, combo, {u"Sucursales"_s, u"IDSucursal"_s, u" AND codBanco=%1"_s.arg(IdOrZero(idBanco))}, id,
                vaciar);
}

void cListas::FillWithNames(adodb::Connection* connection, QObject* combo, const NamedTable& table, const QVariant& id,
                            bool clear) const {
  QComboBox& list = ComboFrom(combo);
  FillCombo(
      list, Connection(connection),
      u"SELECT %1,Nombre FROM %2 WHERE Eliminado=0%3 ORDER BY Nombre"_s.arg(table.idColumn, table.name, table.filter),
      u"Nombre"_s, table.idColumn, clear);
  SelectById(list, id);
}

void cListas::LocalizarElementoLista(QObject* combo, const QVariant& id) {
  SelectById(ComboFrom(combo), id);
}

QString cListas::CargarBancoSucursalCaja(const QVariant& campoID, int /*reservado*/, int id) {
  const CodedTable table = CodedTableOf(campoID);
  const auto rows = Connection(nullptr).Execute(
      u"SELECT %1 FROM %2 WHERE %3=%4"_s.arg(table.codeColumn, table.table, table.idColumn).arg(id));
  return rows->AtEnd() ? QString() : automation::Text(rows->Field(0));
}

void cListas::CargarBancoSucursalLista(QObject* combo, const QVariant& campoID, const QVariant& texto,
                                       int /*reservado*/) {
  QComboBox& list = ComboFrom(combo);
  const CodedTable table = CodedTableOf(campoID);
  const QString code = automation::Text(texto).trimmed();
  const auto rows = Connection(nullptr).Execute(
      u"SELECT %1 FROM %2 WHERE Eliminado=0 AND %3 IN ("_s.arg(table.idColumn, table.table, table.codeColumn) +
      SqlText(code) + u',' + SqlText(code.rightJustified(codeLength, u'0')) + u')');
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
