#include "documents/markers/Markers.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace documents {

namespace {

struct Row {
  Marker marker;
  QStringView text;
};

constexpr std::array rows{
    Row{Marker::Title, u"[Tratamiento]"},
    Row{Marker::FirstName, u"[Nombre]"},
    Row{Marker::LastName, u"[Apellidos]"},
    Row{Marker::FullName, u"[Nombre y apellidos]"},
    Row{Marker::LastNameFirst, u"[Apellidos y nombre]"},
    Row{Marker::TaxNumber, u"[NIF]"},
    Row{Marker::Reference, u"[Cod. Benefactor]"},
    Row{Marker::Street, u"[Direccion]"},
    Row{Marker::Town, u"[Poblacion]"},
    Row{Marker::Province, u"[Provincia]"},
    Row{Marker::Postcode, u"[CP]"},
    Row{Marker::Country, u"[Pais]"},
    Row{Marker::Heading, u"[Encabezado]"},
    Row{Marker::Date, u"[dd/mm/aaaa]"},
    Row{Marker::LongDate, u"[wd, dd de mmm de aaaa]"},
    Row{Marker::DateAndTime, u"[dd/mm/aaaa hh:mm]"},
    Row{Marker::DonationPurpose, u"[Finalidad del donativo]"},
    Row{Marker::DonationAmount, u"[Importe del donativo]"},
    Row{Marker::DonationPeriod, u"[Periodicidad del donativo]"},
    Row{Marker::DonationDate, u"[Fecha del donativo]"},
    Row{Marker::ReceiptText, u"[Texto del recibo]"},
    Row{Marker::SubscriptionPurpose, u"[Finalidad de la suscripcion]"},
    Row{Marker::SubscriptionAmount, u"[Importe de la suscripcion]"},
    Row{Marker::SubscriptionPeriod, u"[Periodicidad de la suscripcion]"},
    Row{Marker::SubscriptionDate, u"[Fecha de la suscripcion]"},
    Row{Marker::Publication, u"[Publicacion de la suscripcion]"},
    Row{Marker::SubscriptionReceiver, u"[Nombre Completo del bienhechor receptor]"},
    Row{Marker::TaxFormPurpose, u"[Finalidad modelo]"},
    Row{Marker::TaxFormTotal, u"[Importe total]"},
    Row{Marker::PersonDeduction, u"[Deduccion fisica]"},
    Row{Marker::CompanyDeduction, u"[Deduccion juridica]"},
};

constexpr bool HasEveryMarkerAtItsNumber() {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (rows[i].marker != Marker(i)) {
      return false;
    }
  }
  return rows.size() == markerCount;
}
static_assert(HasEveryMarkerAtItsNumber());

}  // namespace

QString TextOf(Marker marker) {
  return rows[static_cast<std::size_t>(marker)].text.toString();
}

std::optional<Marker> MarkerOf(QStringView text) {
  const auto row = std::ranges::find(rows, text, &Row::text);
  return row == rows.end() ? std::nullopt : std::optional(row->marker);
}

QStringList UnknownMarkers(const QString& text) {
  static const QRegularExpression bracketed(uR"(\[[^\[\]\n\x{2028}\x{2029}]*\])"_s);
  QStringList unknown;
  for (auto at = bracketed.globalMatch(text); at.hasNext();) {
    const QString word = at.next().captured();
    if (!MarkerOf(word) && !unknown.contains(word)) {
      unknown.append(word);
    }
  }
  return unknown;
}

}  // namespace documents
