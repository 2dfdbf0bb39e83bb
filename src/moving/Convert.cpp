#include "moving/Convert.h"

#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/text/FoldForSearch.h"

#include <QDate>
#include <QRegularExpression>

#include <cmath>

using namespace Qt::StringLiterals;

namespace moving {

namespace {

using database::Column;
using database::ColumnType;
using Kind = Value::Kind;

// The largest amount that the layer takes from a text without loss of its size.
constexpr double mostMoney = 9e14;

QString Shown(const QString& text) {
  constexpr qsizetype most = 60;
  return u"«%1»"_s.arg(text.size() > most ? text.left(most) + u'…' : text);
}

// A number of a text by the layer's rules: a point that can't separate thousands is a decimal point.
std::optional<QString> NumberOf(const QString& text) {
  static const QRegularExpression withPoint(u"^-?[0-9]+\\.[0-9]+$"_s);
  if (const auto spanish = automation::SpanishNumber(text)) {
    return QString::fromLatin1(*spanish);
  }
  const QString trimmed = text.trimmed();
  return withPoint.match(trimmed).hasMatch() ? std::optional(trimmed) : std::nullopt;
}

std::optional<Value> Truth(const QString& text) {
  const QString word = texts::FoldForSearch(text.trimmed());
  if (QStringList{u"-1"_s, u"1"_s, u"si"_s, u"s"_s, u"x"_s, u"verdadero"_s, u"true"_s}.contains(word)) {
    return Value{Kind::Number, u"-1"_s};
  }
  if (QStringList{u"0"_s, u"no"_s, u"n"_s, u"falso"_s, u"false"_s, QString()}.contains(word)) {
    return Value{Kind::Number, u"0"_s};
  }
  return std::nullopt;
}

QString IsoDate(const QString& text) {
  static const QRegularExpression dayFirst(u"^(\\d{1,2})[/.-](\\d{1,2})[/.-](\\d{4})$"_s);
  const auto match = dayFirst.match(text.trimmed());
  const QDate date(match.captured(3).toInt(), match.captured(2).toInt(), match.captured(1).toInt());
  return match.hasMatch() && date.isValid() ? date.toString(Qt::ISODate) : text;
}

bool IsDigits(const QString& text) {
  return !text.isEmpty() &&
         std::all_of(text.begin(), text.end(), [](QChar each) { return each >= u'0' && each <= u'9'; });
}

class RowConversion {
 public:
  RowConversion(const TableMatch& match, const SourceRow& row) : m_match(match), m_rule(*match.rule), m_row(row) {}

  ConvertedRow Run() {
    const std::vector<Column>& columns = m_rule.table->columns;
    m_result.values.resize(qsizetype(columns.size()));
    for (qsizetype i = 0; i < m_match.columns.size() && m_result.refusal.isEmpty(); ++i) {
      if (const Column* column = m_match.columns[i]) {
        // A row of a sheet ends with its last filled cell.
        const SourceCell cell = i < m_row.size() ? m_row[i] : SourceCell();
        m_result.values[column - columns.data()] = Convert(*column, cell);
      }
    }
    for (const QString& zero : m_rule.zeros) {
      m_result.values[m_rule.table->FindColumn(zero) - columns.data()] = {Kind::Number, u"0"_s};
    }
    return m_result;
  }

 private:
  Value Convert(const Column& column, const SourceCell& cell) {
    if (cell.kind == Cell::Unreadable) {
      m_result.refusal = u"«%1» no se puede leer"_s.arg(column.name);
      return {};
    }
    if (cell.kind == Cell::Error) {
      m_result.notes.append(
          u"«%1» es un error o una fórmula sin calcular en la hoja, y queda en blanco"_s.arg(column.name));
    }
    if (cell.kind == Cell::None || cell.kind == Cell::Error) {
      return {};
    }
    if (column.type == ColumnType::Text || column.type == ColumnType::LongText) {
      return Text(column, cell);
    }
    const auto value = column.type == ColumnType::Boolean ? Truth(cell.text) : Number(column, cell);
    if (!value) {
      m_result.refusal = u"%1 no sirve como «%2»"_s.arg(Shown(cell.text), column.name);
    }
    return value.value_or(Value());
  }

  std::optional<Value> Number(const Column& column, const SourceCell& cell) const {
    // What most cells are: nothing needs to be looked at.
    constexpr qsizetype surelyWhole = 9;
    if (cell.text.size() <= surelyWhole && IsDigits(cell.text)) {
      return Value{Kind::Number, cell.text};
    }
    if (cell.text.trimmed().isEmpty()) {
      return Value();
    }
    const auto digits = cell.kind == Cell::Text ? NumberOf(cell.text) : std::optional(cell.text);
    bool isNumber = false;
    const double number = digits ? digits->toDouble(&isNumber) : 0;
    if (!isNumber || !std::isfinite(number)) {
      return std::nullopt;
    }
    if (column.type == ColumnType::Money && std::fabs(number) > mostMoney) {
      return std::nullopt;
    }
    const bool isWhole = column.type != ColumnType::Money && column.type != ColumnType::Decimal;
    const bool fits = number >= std::numeric_limits<qint32>::min() && number <= std::numeric_limits<qint32>::max();
    if (isWhole && (!fits || number != std::trunc(number))) {
      return std::nullopt;
    }
    return Value{Kind::Number, isWhole ? QString::number(qint64(number)) : *digits};
  }

  Value Text(const Column& column, const SourceCell& cell) {
    QString text = cell.text;
    if (cell.kind == Cell::Date) {
      text = text.left(text.indexOf(u'T'));
    } else if (cell.kind == Cell::Boolean) {
      text = text == u"0" ? u"No"_s : u"Sí"_s;
    } else if (cell.kind == Cell::Number) {
      text.replace(u'.', u',');
    }
    if (m_rule.dates.contains(column.name, Qt::CaseInsensitive)) {
      text = IsoDate(text);
    }
    text = Code(column, text);
    if (column.length > 0 && text.size() > column.length && text.toUcs4().size() > column.length) {
      m_result.remarks.append(u"«%1» tiene más de %2 caracteres; entra entero"_s.arg(column.name).arg(column.length));
    }
    return {Kind::Text, text};
  }

  // Zeros that a spreadsheet ate come back; blanks around a code go.
  QString Code(const Column& column, const QString& text) {
    constexpr int postcodeWidth = 5;
    const bool isPostcode = column.name == m_rule.postcode && !m_rule.postcode.isEmpty();
    const bool mayBeWide = !isPostcode && !m_rule.widths.isEmpty();
    const int width = isPostcode ? postcodeWidth : mayBeWide ? m_rule.widths.value(column.name.toLower()) : 0;
    if (width == 0) {
      return text;
    }
    const QString code = text.trimmed();
    // One zero at most is missing in a Spanish postcode; shorter ones are of other countries.
    const bool isShort = IsDigits(code) && code.size() < width && (!isPostcode || code.size() == width - 1);
    if (isShort) {
      m_result.remarks.append(u"«%1» se completa con ceros"_s.arg(column.name));
    }
    return isShort ? code.rightJustified(width, u'0') : code;
  }

  const TableMatch& m_match;
  const TableRule& m_rule;
  const SourceRow& m_row;
  ConvertedRow m_result;
};

}  // namespace

qint64 Value::ToId() const {
  return kind == Kind::Number ? text.toLongLong() : 0;
}

ConvertedRow Convert(const TableMatch& match, const SourceRow& row) {
  return RowConversion(match, row).Run();
}

QString Shown(const Value& value) {
  constexpr qsizetype most = 60;
  constexpr int digits = 15;
  if (value.kind == Kind::Number) {
    return QString::number(value.text.toDouble(), 'g', digits).replace(u'.', u',');
  }
  const QString text = value.text.left(most + 1).simplified();
  return value.text.size() > most ? text.left(most) + u'…' : text;
}

QString Literal(const Value& value) {
  switch (value.kind) {
    case Kind::None:
      return u"NULL"_s;
    case Kind::Text:
      return adodb::StatementText(u"'{}'", value.text);
    case Kind::Number:
      break;
  }
  // As a text with a comma, which the layer reads digit by digit.
  return value.text.contains(u'.') ? u'\'' + QString(value.text).replace(u'.', u',') + u'\'' : value.text;
}

}  // namespace moving
