#include "host/mailing/pieces/MailedRow.h"

#include "documents/people/SpanishDates.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"

#include <QMap>
#include <QStringList>

#include <utility>

using namespace Qt::StringLiterals;

using adodb::Verbatim;
using documents::Subject;

namespace host {

namespace {

using RowsByPerson = QHash<int, QList<MailedRow>>;

QString Amount(const QVariant& amount) {
  return automation::IsNull(amount) ? QString() : automation::Format(amount, u"#,0.00");
}

// A date that is none is shown as it is stored.
QString Date(const QVariant& stored) {
  const QString text = automation::Text(stored);
  const QDate date = documents::DateIn(text);
  return date.isValid() ? documents::ShortDate(date) : text;
}

QString Between(const QDate& from, const QDate& until) {
  QString clause;
  if (from.isValid()) {
    clause += adodb::StatementText(u" AND Donativos.Fecha>='{}'", from.toString(Qt::ISODate));
  }
  if (until.isValid()) {
    clause += adodb::StatementText(u" AND Donativos.Fecha<='{}'", until.toString(Qt::ISODate));
  }
  return clause;
}

RowsByPerson Donations(adodb::Connection& connection, const RowWish& wish) {
  const bool onlyLast = !wish.from.isValid() && !wish.until.isValid();
  const auto rows = adodb::Execute(
      connection,
      u"SELECT Donativos.CodColaborador, TipoDonativos.Nombre, Donativos.Importe, Donativos.Fecha, "
      u"Donativos.TextoRecibo "
      u"FROM Donativos LEFT JOIN TipoDonativos ON Donativos.CodTipoDonativo=TipoDonativos.IDTipoDonativo WHERE "
      u"Donativos.Eliminado=0{} ORDER BY Donativos.Fecha, Donativos.IDDonativo",
      Verbatim{Between(wish.from, wish.until)});
  RowsByPerson donations;
  for (; !rows->AtEnd(); rows->MoveNext()) {
    QList<MailedRow>& own = donations[automation::CLng(rows->Field(0))];
    if (onlyLast) {
      own.clear();
    }
    MailedRow donation;
    donation.purpose = automation::Text(rows->Field(1));
    donation.amount = Amount(rows->Field(2));
    donation.date = Date(rows->Field(3));
    donation.receiptText = automation::Text(rows->Field(4));
    own.append(donation);
  }
  return donations;
}

RowsByPerson Subscriptions(adodb::Connection& connection, const RowWish& wish) {
  QStringList keys;
  for (const int publication : wish.publications) {
    keys.append(QString::number(publication));
  }
  const QString clause = keys.isEmpty() ? QString()
                                        : adodb::StatementText(u" AND Suscripciones.CodTipoPublicacion IN ({})",
                                                               Verbatim{keys.join(u',')});
  const auto rows = adodb::Execute(
      connection,
      u"SELECT Suscripciones.CodColaborador, TipoPublicaciones.Nombre, Suscripciones.Importe, Suscripciones.FechaAlta, "
      u"Suscripciones.TextoRecibo, TipoSuscripciones.Nombre AS Periodicidad FROM (Suscripciones LEFT JOIN "
      u"TipoPublicaciones ON Suscripciones.CodTipoPublicacion=TipoPublicaciones.IDTipoPublicacion) LEFT JOIN "
      u"TipoSuscripciones ON Suscripciones.CodTipoSuscripcion=TipoSuscripciones.IDTipoSuscripcion WHERE "
      u"Suscripciones.Eliminado=0{} ORDER BY Suscripciones.FechaAlta, Suscripciones.IDSuscripcion",
      Verbatim{clause});
  RowsByPerson subscriptions;
  for (; !rows->AtEnd(); rows->MoveNext()) {
    MailedRow subscription;
    subscription.purpose = automation::Text(rows->Field(1));
    subscription.amount = Amount(rows->Field(2));
    subscription.date = Date(rows->Field(3));
    subscription.receiptText = automation::Text(rows->Field(4));
    subscription.period = automation::Text(rows->Field(5));
    subscriptions[automation::CLng(rows->Field(0))].append(subscription);
  }
  return subscriptions;
}

QHash<int, QString> Percentages(adodb::Connection& connection) {
  QHash<int, QString> percentages;
  const auto rows = adodb::Execute(connection, u"SELECT IDTipoDeduccion, Porcentaje FROM TipoDeducciones");
  for (; !rows->AtEnd(); rows->MoveNext()) {
    percentages.insert(automation::CLng(rows->Field(0)), automation::Text(rows->Field(1)));
  }
  return percentages;
}

RowsByPerson YearlySums(adodb::Connection& connection, int year) {
  struct Sum {
    MailedRow row;
    qint64 total = 0;  ///< Ten-thousandths.
  };
  const QHash<int, QString> percentages = Percentages(connection);
  const auto rows = adodb::Execute(
      connection,
      u"SELECT Donativos.CodColaborador, TipoDonativos.IDTipoDonativo, Donativos.Importe, TipoDonativos.Nombre, "
      u"TipoDonativos.CodTipoDeduccionFisica, TipoDonativos.CodTipoDeduccionJuridica FROM Donativos INNER JOIN "
      u"TipoDonativos ON Donativos.CodTipoDonativo=TipoDonativos.IDTipoDonativo WHERE Donativos.Eliminado=0 AND "
      u"TipoDonativos.Modelo182=True{}",
      Verbatim{Between(QDate(year, 1, 1), QDate(year, 12, 31))});
  QMap<std::pair<int, int>, Sum> sums;
  for (; !rows->AtEnd(); rows->MoveNext()) {
    Sum& sum = sums[{automation::CLng(rows->Field(0)), automation::CLng(rows->Field(1))}];
    sum.total += automation::IsNull(rows->Field(2)) ? 0 : automation::CCur(rows->Field(2)).Scaled();
    sum.row.purpose = automation::Text(rows->Field(3));
    sum.row.personDeduction = percentages.value(automation::CLng(rows->Field(4)));
    sum.row.companyDeduction = percentages.value(automation::CLng(rows->Field(5)));
  }
  RowsByPerson yearly;
  for (auto sum = sums.begin(); sum != sums.end(); ++sum) {
    sum->row.amount = Amount(QVariant::fromValue(automation::Currency::FromScaled(sum->total)));
    yearly[sum.key().first].append(sum->row);
  }
  return yearly;
}

}  // namespace

RowsByPerson ReadRows(adodb::Connection& connection, const RowWish& wish) {
  switch (wish.subject) {
    case Subject::Donation:
      return Donations(connection, wish);
    case Subject::Subscription:
      return Subscriptions(connection, wish);
    case Subject::TaxReturn:
      return YearlySums(connection, wish.year);
    default:
      return {};
  }
}

}  // namespace host
