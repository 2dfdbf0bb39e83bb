#include "host/mailing/pieces/LabelFields.h"

#include "database/Schema.h"
#include "documents/people/SpanishDates.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

using adodb::Verbatim;

namespace host {

namespace {

// How a table's rows belong to people. Later rows of the same person take the place of earlier ones.
struct Way {
  const char16_t* table;
  const char16_t* person;  ///< The column of the person's key.
  const char16_t* rows;    ///< What stands behind FROM.
};

constexpr Way ways[] = {
    {u"COLABORADORES", u"Colaboradores.IDColaborador", u"Colaboradores WHERE Colaboradores.Eliminado=0"},
    {u"PROVINCIAS", u"Colaboradores.IDColaborador",
     u"Colaboradores INNER JOIN Provincias ON Colaboradores.CodProvincia=Provincias.IDProvincia"},
    {u"PAISES", u"Colaboradores.IDColaborador",
     u"Colaboradores INNER JOIN Paises ON Colaboradores.codpais=Paises.IDPais"},
    {u"DIOCESIS", u"Colaboradores.IDColaborador",
     u"Colaboradores INNER JOIN Diocesis ON Colaboradores.CodDiocesis=Diocesis.IDDiocesis"},
    {u"ENCABEZADOS", u"Colaboradores.IDColaborador",
     u"Colaboradores INNER JOIN Encabezados ON Colaboradores.CodEncabezado=Encabezados.IDEncabezado"},
    {u"COBRADORES", u"Colaboradores.IDColaborador",
     u"Colaboradores INNER JOIN Cobradores ON Colaboradores.CodCobrador=Cobradores.IDCobrador"},
    {u"DONATIVOS", u"Donativos.CodColaborador",
     u"Donativos WHERE Donativos.Eliminado=0 ORDER BY Donativos.Fecha, Donativos.IDDonativo"},
    {u"SUSCRIPCIONES", u"Suscripciones.CodColaborador",
     u"Suscripciones WHERE Suscripciones.Eliminado=0 ORDER BY Suscripciones.FechaAlta, Suscripciones.IDSuscripcion"},
    {u"TIPOPUBLICACIONES", u"Suscripciones.CodColaborador",
     u"Suscripciones INNER JOIN TipoPublicaciones ON "
     u"Suscripciones.CodTipoPublicacion=TipoPublicaciones.IDTipoPublicacion WHERE Suscripciones.Eliminado=0 ORDER BY "
     u"Suscripciones.FechaAlta, Suscripciones.IDSuscripcion"},
    {u"EMISORES", u"Donativos.CodColaborador",
     u"(Donativos INNER JOIN Emisores_Cuentas ON Donativos.CodEmisor_Cuenta=Emisores_Cuentas.IDEmisor_Cuenta) INNER "
     u"JOIN Emisores ON Emisores_Cuentas.CodEmisor=Emisores.IDEmisor WHERE Donativos.Eliminado=0 ORDER BY "
     u"Donativos.Fecha, Donativos.IDDonativo"},
    {u"SUCURSALES", u"Colaboradores_Cuentas.CodColaborador",
     u"Colaboradores_Cuentas INNER JOIN Sucursales ON Colaboradores_Cuentas.codSucursal=Sucursales.IDSucursal WHERE "
     u"Colaboradores_Cuentas.Eliminado=0 ORDER BY Colaboradores_Cuentas.IDColaborador_Cuenta"},
    {u"BANCOS", u"Colaboradores_Cuentas.CodColaborador",
     u"(Colaboradores_Cuentas INNER JOIN Sucursales ON Colaboradores_Cuentas.codSucursal=Sucursales.IDSucursal) INNER "
     u"JOIN Bancos ON Sucursales.codBanco=Bancos.IDBanco WHERE Colaboradores_Cuentas.Eliminado=0 ORDER BY "
     u"Colaboradores_Cuentas.IDColaborador_Cuenta"},
};

const Way* WayTo(const QString& table) {
  const auto* way = std::ranges::find_if(ways, [&](const Way& known) { return table == QStringView(known.table); });
  return way == std::end(ways) ? nullptr : way;
}

const database::Column* ColumnOf(const LabelField& field) {
  const database::Table* table = database::Schema::Current().FindTable(field.table);
  return table == nullptr ? nullptr : table->FindColumn(field.column);
}

QSet<QString> Catalogue(adodb::Connection& connection) {
  QSet<QString> names;
  const auto rows = adodb::Execute(connection, u"SELECT NombreCampo FROM TipoCamposEtiquetas");
  for (; !rows->AtEnd(); rows->MoveNext()) {
    names.insert(automation::Text(rows->Field(0)).trimmed().toUpper());
  }
  return names;
}

/// What the fields of a sheet for disks are; the catalogue is not asked for them.
const QSet<QString>& DiskFields() {
  static const QSet<QString> names = {
      u"[EMISORES].[CIF]"_s,      u"[EMISORES].[SUFIJO]"_s,   u"[EMISORES].[NOMBRE]"_s,
      u"[BANCOS].[NUMERO]"_s,     u"[SUCURSALES].[CODIGO]"_s, u"[DISCOS].[FECHACREACION]"_s,
      u"[DISCOS].[FECHACARGO]"_s, u"[DISCOS].[RECIBOS]"_s,    u"[DISCOS].[IMPORTE]"_s};
  return names;
}

/// Reads "[TABLA].[COLUMNA]" where it is one of the known.
bool ReadName(const QString& name, const QSet<QString>& known, LabelField& field) {
  static const QRegularExpression form(uR"(^\[(\w+)\]\.\[(\w+)\]$)"_s);
  const QRegularExpressionMatch match = form.match(name.trimmed().toUpper());
  if (!match.hasMatch() || !known.contains(match.captured())) {
    return false;
  }
  field.table = match.captured(1);
  field.column = match.captured(2);
  return ColumnOf(field) != nullptr;
}

void ReadTable(adodb::Connection& connection, const QList<LabelField>& fields, const QString& table,
               QHash<int, QStringList>& values) {
  const Way& way = *WayTo(table);
  QList<qsizetype> places;
  QString columns;
  for (qsizetype i = 0; i < fields.size(); ++i) {
    if (fields[i].table == table) {
      places.append(i);
      columns += u", "_s + table + u'.' + ColumnOf(fields[i])->name;
    }
  }
  const auto rows = adodb::Execute(connection, u"SELECT {}{} FROM {}", Verbatim{QString::fromUtf16(way.person)},
                                   Verbatim{columns}, Verbatim{QString::fromUtf16(way.rows)});
  for (; !rows->AtEnd(); rows->MoveNext()) {
    QStringList& own = values[automation::CLng(rows->Field(0))];
    own.resize(fields.size());
    for (int i = 0; i < static_cast<int>(places.size()); ++i) {
      own[places[i]] = ShownValue(fields[places[i]], rows->Field(i + 1));
    }
  }
}

}  // namespace

QString ShownValue(const LabelField& field, const QVariant& value) {
  if (automation::IsNull(value)) {
    return {};
  }
  if (ColumnOf(field)->type == database::ColumnType::Money) {
    return automation::Format(value, u"#,0.00");
  }
  const QString text = automation::Text(value);
  const QDate date = field.column.startsWith(u"FECHA") ? documents::DateIn(text) : QDate();
  return date.isValid() ? documents::ShortDate(date) : text;
}

QList<LabelField> ReadLabelFields(adodb::Connection& connection, int sheet, LabelsFor what, QStringList& faults) {
  const bool areDisks = what == LabelsFor::Disks;
  const QSet<QString> known = areDisks ? DiskFields() : Catalogue(connection);
  const auto rows =
      adodb::Execute(connection,
                     u"SELECT Linea, Orden, NombreCampo, codTipoCampoEtiqueta FROM EtiquetasCampos WHERE "
                     u"codEtiqueta={} AND Disco={} AND Eliminado=0 ORDER BY Linea, Orden, IDEtiquetaCampo",
                     sheet, areDisks);
  QList<LabelField> fields;
  for (; !rows->AtEnd(); rows->MoveNext()) {
    LabelField field;
    field.line = automation::CLng(rows->Field(0));
    field.position = automation::CLng(rows->Field(1));
    const QString name = automation::Text(rows->Field(2));
    // A free text stands behind a star.
    if (!areDisks && automation::CLng(rows->Field(3)) == 0 && name.startsWith(u'*')) {
      field.text = name.mid(1);
    } else if (!ReadName(name, known, field) || (!areDisks && WayTo(field.table) == nullptr)) {
      faults.append(u"El campo «%1» de la hoja no es un dato de %2: queda vacío."_s.arg(
          name, areDisks ? u"discos bancarios"_s : u"personas"_s));
      continue;
    }
    fields.append(field);
  }
  return fields;
}

QHash<int, QStringList> ReadFieldValues(adodb::Connection& connection, const QList<LabelField>& fields) {
  QStringList tables;
  for (const LabelField& field : fields) {
    if (!field.table.isEmpty()) {
      tables.append(field.table);
    }
  }
  tables.removeDuplicates();
  QHash<int, QStringList> values;
  for (const QString& table : tables) {
    ReadTable(connection, fields, table, values);
  }
  return values;
}

}  // namespace host
