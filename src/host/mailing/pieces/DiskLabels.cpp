#include "host/mailing/pieces/DiskLabels.h"

#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <algorithm>

using namespace Qt::StringLiterals;

using adodb::Verbatim;

namespace host {

namespace {

struct Issuer {
  int id = 0;
  QHash<QString, QVariant> columns;  ///< "CIF", "SUFIJO", "NOMBRE"
};

[[noreturn]] void Refuse(const QString& text) {
  throw automation::Error(automation::InvalidProcedureCall, text);
}

QString Listed(const QList<int>& keys) {
  QStringList texts;
  for (const int key : keys) {
    texts.append(QString::number(key));
  }
  return texts.join(u',');
}

/// By their presenters.
QHash<int, QList<Issuer>> Issuers(adodb::Connection& connection) {
  QHash<int, QList<Issuer>> issuers;
  const auto rows = adodb::Execute(
      connection,
      u"SELECT CodPresentador, IDEmisor, Cif, Sufijo, Nombre FROM Emisores WHERE Eliminado=0 ORDER BY IDEmisor");
  for (; !rows->AtEnd(); rows->MoveNext()) {
    issuers[automation::CLng(rows->Field(0))].append(
        {automation::CLng(rows->Field(1)),
         {{u"CIF"_s, rows->Field(2)}, {u"SUFIJO"_s, rows->Field(3)}, {u"NOMBRE"_s, rows->Field(4)}}});
  }
  return issuers;
}

/// The presenter's only issuer, or the one that is meant.
Issuer IssuerFor(const QString& presenter, const QList<Issuer>& own, const QList<int>& meant) {
  QList<Issuer> possible = own;
  if (own.size() > 1) {
    possible.removeIf([&](const Issuer& issuer) { return !meant.contains(issuer.id); });
  }
  if (own.size() > 1 && possible.size() != 1) {
    QStringList names;
    for (const Issuer& issuer : own) {
      names.append(u"%1 (%2)"_s.arg(automation::Text(issuer.columns[u"NOMBRE"_s]), QString::number(issuer.id)));
    }
    Refuse(u"El presentador «%1» tiene varios emisores: %2. Diga cuál."_s.arg(presenter, names.join(u", "_s)));
  }
  return possible.value(0);
}

void RequireAll(const QList<int>& wished, const QList<int>& found) {
  const auto missing = std::ranges::find_if(wished, [&](int disk) { return !found.contains(disk); });
  if (missing != wished.end()) {
    Refuse(u"No hay ningún disco con el número %1."_s.arg(*missing));
  }
}

}  // namespace

std::vector<DiskLabel> ReadDiskLabels(adodb::Connection& connection, const QList<LabelField>& fields,
                                      const DiskWish& wish) {
  const QHash<int, QList<Issuer>> issuers = Issuers(connection);
  const QString clause = wish.disks.isEmpty()
                             ? QString()
                             : adodb::StatementText(u" AND Discos.IDDisco IN ({})", Verbatim{Listed(wish.disks)});
  const auto rows = adodb::Execute(
      connection,
      u"SELECT Discos.IDDisco, Discos.CodPresentador, Discos.FechaCreacion, Discos.FechaCargo, Discos.Recibos, "
      u"Discos.Importe, Bancos.Numero, Sucursales.Codigo, Presentadores.Nombre FROM ((Discos LEFT JOIN Presentadores "
      u"ON "
      u"Discos.CodPresentador=Presentadores.IDPresentador) LEFT JOIN Bancos ON Presentadores.CodBanco=Bancos.IDBanco) "
      u"LEFT JOIN Sucursales ON Presentadores.CodSucursal=Sucursales.IDSucursal WHERE Discos.Eliminado=0{} ORDER BY "
      u"Discos.FechaCreacion, Discos.IDDisco",
      Verbatim{clause});
  std::vector<DiskLabel> labels;
  QList<int> found;
  for (; !rows->AtEnd(); rows->MoveNext()) {
    found.append(automation::CLng(rows->Field(0)));
    const int presenter = automation::IsNull(rows->Field(1)) ? 0 : automation::CLng(rows->Field(1));
    const Issuer issuer = IssuerFor(automation::Text(rows->Field(8)), issuers.value(presenter), wish.issuers);
    DiskLabel label{.name = u"Disco %1"_s.arg(found.constLast()), .values = {}, .hasIssuer = issuer.id != 0};
    for (const LabelField& field : fields) {
      const QVariant value = field.table == u"EMISORES"_s ? issuer.columns.value(field.column)
                             : field.table == u"BANCOS"_s ? rows->Field(6)
                             : field.table == u"DISCOS"_s ? rows->Field(field.column)
                                                          : rows->Field(7);
      label.values.append(ShownValue(field, value));
    }
    labels.push_back(label);
  }
  RequireAll(wish.disks, found);
  return labels;
}

}  // namespace host
