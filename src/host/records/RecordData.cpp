#include "host/records/RecordData.h"

#include "platform/automation/Conversion.h"
#include "platform/text/FoldForSearch.h"

#include <QCollator>
#include <QDateTime>
#include <QLocale>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// More than any column takes; a file that was tampered with may hold texts of any length.
constexpr qsizetype longestKeptText = 1000;

// A copy of its own: a part would keep the whole text in memory.
QString KeptText(const QVariant& value) {
  const QString text = automation::Text(value);
  return text.size() <= longestKeptText ? text : QStringView(text).left(longestKeptText).toString();
}

double ToNumber(const QVariant& value, ColumnKind kind) {
  if (kind == ColumnKind::Moment) {
    const QDateTime moment = QDateTime::fromString(automation::Text(value), Qt::ISODate);
    return moment.isValid() ? static_cast<double>(moment.toMSecsSinceEpoch())
                            : std::numeric_limits<double>::quiet_NaN();
  }
  if (!value.isValid() || !automation::IsNumeric(value)) {
    return std::numeric_limits<double>::quiet_NaN();
  }
  return automation::CDbl(value);
}

const QLocale& Spanish() {
  static const QLocale locale(QLocale::Spanish, QLocale::Spain);
  return locale;
}

std::vector<int> Rows(int count) {
  std::vector<int> rows(static_cast<std::size_t>(count));
  std::iota(rows.begin(), rows.end(), 0);
  return rows;
}

QCollator SpanishCollator() {
  QCollator collator(Spanish());
  collator.setCaseSensitivity(Qt::CaseInsensitive);
  return collator;
}

// Those without a number first.
bool NumberBefore(double left, double right) {
  return std::isnan(left) ? !std::isnan(right) : left < right;
}

template <typename Keys, typename Less>
std::vector<int> StableOrder(const Keys& keys, Less less) {
  std::vector<int> rows = Rows(static_cast<int>(keys.size()));
  std::stable_sort(rows.begin(), rows.end(), [&](int left, int right) { return less(keys.at(left), keys.at(right)); });
  return rows;
}

}  // namespace

QString DisplayNumber(double value, ColumnKind kind) {
  if (std::isnan(value)) {
    return {};
  }
  switch (kind) {
    case ColumnKind::YesNo:
      return value == 0 ? u"No"_s : u"Sí"_s;
    case ColumnKind::Amount:
      return automation::Format(value, u"#,##0.00") + u" €"_s;
    case ColumnKind::Percentage:
      return Spanish().toString(value, 'g', 10) + u" %"_s;
    case ColumnKind::Moment:
      return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(value)).toString(u"dd/MM/yyyy HH:mm"_s);
    default: {
      QLocale plain = Spanish();
      plain.setNumberOptions(QLocale::OmitGroupSeparator);
      return plain.toString(value, 'g', 15);
    }
  }
}

RecordData::RecordData(QList<ListColumn> columns)
    : m_columns(std::move(columns)), m_cells(static_cast<std::size_t>(m_columns.size())) {}

void RecordData::Append(int id, const QList<QVariant>& values) {
  m_ids.push_back(id);
  QString searched;
  for (int column = 0; column < m_columns.size(); ++column) {
    const QVariant value = values.value(column);
    Cells& cells = m_cells[static_cast<std::size_t>(column)];
    if (m_columns[column].kind == ColumnKind::Text) {
      cells.texts.push_back(KeptText(value));
      searched += cells.texts.back();
    } else {
      cells.numbers.push_back(ToNumber(value, m_columns[column].kind));
      searched += DisplayNumber(cells.numbers.back(), m_columns[column].kind);
    }
    // Words are searched without blanks, so that none is found across two columns.
    searched += u'\n';
  }
  m_searchTexts.push_back(texts::FoldForSearch(searched));
}

void RecordData::Append(const RecordData& other) {
  m_ids.append(other.m_ids);
  m_searchTexts.append(other.m_searchTexts);
  for (std::size_t column = 0; column < m_cells.size(); ++column) {
    m_cells[column].texts.append(other.m_cells[column].texts);
    m_cells[column].numbers.append(other.m_cells[column].numbers);
  }
}

std::vector<int> RecordData::Remove(const QSet<int>& ids) {
  std::vector<int> newRows;
  int kept = 0;
  for (const int id : std::as_const(m_ids)) {
    newRows.push_back(ids.contains(id) ? -1 : kept++);
  }
  const auto compact = [&newRows](auto& values) {
    if (values.isEmpty()) {
      return;
    }
    std::size_t row = 0;
    values.removeIf([&](const auto&) { return newRows[row++] < 0; });
  };
  compact(m_ids);
  compact(m_searchTexts);
  for (Cells& cells : m_cells) {
    compact(cells.texts);
    compact(cells.numbers);
  }
  return newRows;
}

QString RecordData::Display(int row, int column) const {
  const Cells& cells = m_cells[static_cast<std::size_t>(column)];
  const ColumnKind kind = m_columns[column].kind;
  if (kind == ColumnKind::Text) {
    return cells.texts[row];
  }
  return DisplayNumber(cells.numbers[row], kind);
}

QVariant RecordData::Value(int row, int column) const {
  const ColumnKind kind = m_columns[column].kind;
  if (kind == ColumnKind::Text || kind == ColumnKind::Moment) {
    return Display(row, column);
  }
  const double number = m_cells[static_cast<std::size_t>(column)].numbers[row];
  if (std::isnan(number)) {
    return {};
  }
  return kind == ColumnKind::YesNo ? QVariant(number != 0) : QVariant(number);
}

std::vector<int> RecordData::SortedBy(int column) const {
  const Cells& cells = m_cells[static_cast<std::size_t>(column)];
  if (m_columns[column].kind == ColumnKind::Text) {
    return SortedByText(cells.texts);
  }
  return StableOrder(cells.numbers, NumberBefore);
}

std::function<bool(int, int)> RecordData::Before(int column) const {
  const Cells& cells = m_cells[static_cast<std::size_t>(column)];
  if (m_columns[column].kind == ColumnKind::Text) {
    return [&texts = cells.texts, collator = SpanishCollator()](int left, int right) {
      return collator.compare(texts[left], texts[right]) < 0;
    };
  }
  return [&numbers = cells.numbers](int left, int right) { return NumberBefore(numbers[left], numbers[right]); };
}

std::vector<int> RecordData::SortedByText(const QList<QString>& texts) const {
  const QCollator collator = SpanishCollator();
  std::vector<QCollatorSortKey> keys;
  keys.reserve(texts.size());
  for (const QString& text : texts) {
    keys.push_back(collator.sortKey(text));
  }
  return StableOrder(keys, [](const QCollatorSortKey& left, const QCollatorSortKey& right) { return left < right; });
}

SortedRecords::SortedRecords(RecordData list, int column)
    : records(std::move(list)), sortColumn(column >= 0 && column < records.Columns().size() ? column : 0) {
  if (!records.Columns().isEmpty()) {
    ascending = records.SortedBy(sortColumn);
  }
}

}  // namespace host
