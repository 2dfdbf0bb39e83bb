#pragma once

#include <QDate>
#include <QList>
#include <QString>

#include <array>

namespace host {

/// What people are chosen by; several are joined by "and", the values of one by "or". Values are keys of records.
enum class Condition {
  Publication,   ///< Of a subscription.
  DonationType,  ///< Of a donation, together with the dates.
  Issuer,        ///< Of the account of a donation or a subscription.
  Diocese,
  Province,
  Community,
  Country,
  Collector,
  Heading,
};
inline constexpr std::size_t conditionCount = 9;

struct Conditions {
  std::array<QList<int>, conditionCount> values;  ///< By the condition's number; an empty list asks nothing.
  QDate donationsFrom;                            ///< Both belong to it; an invalid date asks nothing.
  QDate donationsUntil;

  const QList<int>& Of(Condition condition) const { return values[static_cast<std::size_t>(condition)]; }
  bool AskNothing() const { return *this == Conditions(); }
  bool operator==(const Conditions&) const = default;
};

/// As a selection keeps them, a line each: "Publicacion=1,3", "DonativosDesde=2026-01-31".
QString TextOf(const Conditions& conditions);
/// Raises 5, naming it, for a line that can't be understood.
Conditions ConditionsIn(const QString& text);

/// The condition of a statement over Colaboradores, each part behind " AND "; empty for none.
QString ClauseOf(const Conditions& conditions);

/// Where the values of a condition are records, and how their list is called.
struct ConditionRecords {
  QString table;
  QString key;
  QString title;  ///< "publicación"
};
ConditionRecords RecordsOf(Condition condition);

}  // namespace host
