#include "database/engine/Transfer.h"

#include "platform/adodb/ErrorNumbers.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Error.h"

#include <QCryptographicHash>

#include <array>
#include <charconv>

using adodb::Verbatim;
using namespace Qt::StringLiterals;

namespace database {

namespace {

// What tells the content of a table from any other.
struct Content {
  qint64 rows = 0;
  QByteArray hash;

  bool operator==(const Content&) const = default;
};

class ContentHash {
 public:
  void Add(const CarriedRow& row) {
    for (const CarriedValue& value : row) {
      const QByteArray bytes = value.kind == CarriedValue::Kind::Text ? value.text.toUtf8() : value.digits;
      // With kind and length, so that no two rows look the same.
      const std::array<qint64, 2> head = {static_cast<qint64>(value.kind), bytes.size()};
      m_hash.addData(QByteArrayView(reinterpret_cast<const char*>(head.data()), sizeof(head)));
      m_hash.addData(bytes);
    }
    ++m_rows;
  }
  Content Result() const { return {m_rows, m_hash.result()}; }

 private:
  QCryptographicHash m_hash{QCryptographicHash::Sha256};
  qint64 m_rows = 0;
};

QByteArray Digits(double value) {
  std::array<char, 32> digits{};
  const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), value);
  return QByteArray(digits.data(), end - digits.data());
}

CarriedValue Carried(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::QString:
      return {CarriedValue::Kind::Text, {}, value.toString()};
    case QMetaType::Double:
      return {CarriedValue::Kind::Number, Digits(value.toDouble()), {}};
    case QMetaType::Bool:
      return {CarriedValue::Kind::Number, value.toBool() ? "-1" : "0", {}};
    case QMetaType::Int:
    case QMetaType::LongLong:
      return {CarriedValue::Kind::Number, QByteArray::number(value.toLongLong()), {}};
    default:
      return {};
  }
}

Content ReadRows(adodb::Connection& connection, const Table& table, RowTaker* taker, const Stop& stop) {
  constexpr qint64 rowsBetweenQuestions = 1000;
  ContentHash hash;
  CarriedRow row(table.columns.size());
  const QString& key = table.columns.front().name;
  const auto rows =
      adodb::Execute(connection, u"SELECT * FROM [{}] ORDER BY [{}]", Verbatim{table.name}, Verbatim{key});
  for (qint64 count = 1; !rows->AtEnd(); rows->MoveNext(), ++count) {
    if (count % rowsBetweenQuestions == 0 && stop && stop()) {
      throw automation::Error(adodb::Stopped, u"El trabajo se ha interrumpido."_s);
    }
    for (std::size_t i = 0; i < row.size(); ++i) {
      row[i] = Carried(rows->Field(static_cast<int>(i)));
    }
    hash.Add(row);
    if (taker != nullptr) {
      taker->Add(row);
    }
  }
  return hash.Result();
}

automation::Error Differs(const Table& table) {
  return automation::Error(
      adodb::EngineFailure,
      u"La tabla %1 no llegó igual que estaba a la otra base de datos. No se ha cambiado nada. Compruebe las dos con "
      "«kel-host comprobar» y vuelva a intentarlo."_s.arg(table.name));
}

qint64 CarryTable(const TransferSource& source, const TransferTarget& target, const Table& table, const Stop& stop) {
  const std::unique_ptr<RowTaker> taker = target.Taker(table);
  const Content sent = ReadRows(source.Connection(), table, taker.get(), stop);
  taker->Finish();
  target.CountOnFrom(table, source.LastKey(table));
  const Content arrived = ReadRows(target.Connection(), table, nullptr, stop);
  if (!(sent == arrived) || target.LastKey(table) != source.LastKey(table)) {
    throw Differs(table);
  }
  return sent.rows;
}

}  // namespace

bool IsCarried(const Table& table) {
  return table.name != u"BloqueoRegistros" && table.name != u"Claves";
}

CopySize CarryRows(const TransferSource& source, const TransferTarget& target, const Stop& stop) {
  CopySize size;
  for (const Table& table : Schema::Current().Tables()) {
    if (IsCarried(table)) {
      ++size.tables;
      size.rows += CarryTable(source, target, table, stop);
    }
  }
  return size;
}

}  // namespace database
