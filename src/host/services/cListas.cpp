#include "host/services/cListas.h"

#include "host/services/ComboFilling.h"
#include "host/services/Statements.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <QComboBox>
#include <QRegularExpression>

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
      {QStringLiteral("Bancos"), QStringLiteral("IDBanco"), QStringLiteral("Numero")},
      {QStringLiteral("Sucursales"), QStringLiteral("IDSucursal"), QStringLiteral("Codigo")},
  };
  for (const CodedTable& table : tables) {
    if (table.idColumn.compare(automation::Text(idColumn), Qt::CaseInsensitive) == 0) {
      return table;
    }
  }
  throw automation::Error(automation::InvalidProcedureCall);
}

QString SortedTable(const QString& table, const QString& textColumn, const QString& idColumn) {
  return QStringLiteral("SELECT %1,%2 FROM %3 ORDER BY %1").arg(textColumn, idColumn, table);
}

bool IsSelect(const QString& origin) {
  static const QRegularExpression select(QStringLiteral("\\A\\s*SELECT\\s"), QRegularExpression::CaseInsensitiveOption);
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
  FillWithNames(conexion, combo, {QStringLiteral("Paises"), QStringLiteral("IDPais")}, id, vaciar);
}

void cListas::RellenarComboProvincias(adodb::Connection* conexion, QObject* combo, const QVariant& idPais,
                                      const QVariant& id, bool vaciar) {
  FillWithNames(conexion, combo,
                {QStringLiteral("Provincias"), QStringLiteral("IDProvincia"),
                 QStringLiteral(" AND CodPais=%1").arg(IdOrZero(idPais))},
                id, vaciar);
}

void cListas::rellenarcombobancos(QObject* combo, adodb::Connection* conexion, const QVariant& id, bool vaciar) {
  FillWithNames(conexion, combo, {QStringLiteral("Bancos"), QStringLiteral("IDBanco")}, id, vaciar);
}

void cListas::rellenarcombosucursales(QObject* combo, const QVariant& idBanco, adodb::Connection* conexion,
                                      const QVariant& id, bool vaciar) {
  FillWithNames(conexion, combo,
                {QStringLiteral("Sucursales"), QStringLiteral("IDSucursal"),
                 QStringLiteral(" AND codBanco=%1").arg(IdOrZero(idBanco))},
                id, vaciar);
}

void cListas::FillWithNames(adodb::Connection* connection, QObject* combo, const NamedTable& table, const QVariant& id,
                            bool clear) const {
  QComboBox& list = ComboFrom(combo);
  FillCombo(list, Connection(connection),
            QStringLiteral("SELECT %1,Nombre FROM %2 WHERE Eliminado=0%3 ORDER BY Nombre")
                .arg(table.idColumn, table.name, table.filter),
            QStringLiteral("Nombre"), table.idColumn, clear);
  SelectById(list, id);
}

void cListas::LocalizarElementoLista(QObject* combo, const QVariant& id) {
  SelectById(ComboFrom(combo), id);
}

QString cListas::CargarBancoSucursalCaja(const QVariant& campoID, int /*reservado*/, int id) {
  const CodedTable table = CodedTableOf(campoID);
  const auto rows = Connection(nullptr).Execute(
      QStringLiteral("SELECT %1 FROM %2 WHERE %3=%4").arg(table.codeColumn, table.table, table.idColumn).arg(id));
  return rows->AtEnd() ? QString() : automation::Text(rows->Field(0));
}

void cListas::CargarBancoSucursalLista(QObject* combo, const QVariant& campoID, const QVariant& texto,
                                       int /*reservado*/) {
  QComboBox& list = ComboFrom(combo);
  const CodedTable table = CodedTableOf(campoID);
  const QString code = automation::Text(texto).trimmed();
  const auto rows =
      Connection(nullptr).Execute(QStringLiteral("SELECT %1 FROM %2 WHERE Eliminado=0 AND %3 IN (")
                                      .arg(table.idColumn, table.table, table.codeColumn) +
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
