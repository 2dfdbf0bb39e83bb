#include "host/moving/RecordInspection.h"

#include "documents/labels/Sheet.h"
#include "documents/markers/Markers.h"
#include "documents/rtf/Rtf.h"

#include <QTextDocument>

#include <cmath>

using namespace Qt::StringLiterals;

namespace host {

namespace {

using moving::Value;

Value ValueOf(const database::Table& table, const QList<Value>& values, const QString& column) {
  const database::Column* found = table.FindColumn(column);
  return found == nullptr ? Value() : values[found - table.columns.data()];
}

QStringList InspectLetter(const QString& content, const database::Stop& stop) {
  if (content.isEmpty()) {
    return {};
  }
  QTextDocument document;
  rtf::Limits limits;
  limits.goOn = [&stop] { return !stop || !stop(); };
  const rtf::Report report = rtf::Read(content, document, limits);
  if (report.outcome == rtf::Outcome::Refused) {
    return {u"la carta no se podrá abrir: %1"_s.arg(report.reason)};
  }
  QStringList remarks;
  if (report.outcome == rtf::Outcome::PlainText) {
    remarks += u"la carta no es RTF, y se abrirá como texto sin formato"_s;
  }
  const QStringList unknown = documents::UnknownMarkers(document.toPlainText());
  if (!unknown.isEmpty()) {
    remarks += u"la carta tiene marcas que no se conocen: %1"_s.arg(unknown.join(u", "_s));
  }
  return remarks;
}

std::optional<automation::Currency> NumberOf(const Value& value) {
  constexpr double scale = 10'000;
  constexpr double most = 1e12;
  const double number = value.text.toDouble();
  return value.IsEmpty() || std::fabs(number) > most
             ? std::nullopt
             : std::optional(automation::Currency::FromScaled(std::llround(number * scale)));
}

QStringList InspectSheet(const database::Table& table, const QList<Value>& values) {
  documents::SheetNumbers numbers;
  QStringList remarks;
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const auto number = documents::SheetNumber(i);
    const QString column = documents::ColumnOf(number);
    const Value value = ValueOf(table, values, column);
    const documents::Limits bounds = documents::BoundsOf(number);
    numbers[i] = NumberOf(value);
    const double said = value.text.toDouble();
    if (numbers[i] && (said < bounds.min || said > bounds.max)) {
      remarks += u"«%1» es %2, y tiene que estar entre %3 y %4"_s.arg(column, moving::Shown(value))
                     .arg(bounds.min)
                     .arg(bounds.max);
    }
  }
  const auto sheet = documents::MakeSheet(numbers);
  if (!sheet) {
    remarks += u"a la hoja le faltan medidas"_s;
  } else if (!documents::Fits(*sheet, documents::UsualPaper())) {
    remarks += u"la hoja no cabe en %1"_s.arg(documents::UsualPaper().name);
  }
  return remarks;
}

}  // namespace

QStringList InspectRecord(const database::Table& table, const QList<Value>& values, const database::Stop& stop) {
  if (table.name == u"CartasModelo") {
    return InspectLetter(ValueOf(table, values, u"Contenido"_s).text, stop);
  }
  return table.name == u"ETIQUETAS" ? InspectSheet(table, values) : QStringList();
}

}  // namespace host
