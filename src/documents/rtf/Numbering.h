#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QTextListFormat>

#include <optional>
#include <string_view>

namespace rtf {

/// How the items of a list are marked.
struct Numbering {
  enum class Kind { None, Bullet, Decimal, UpperRoman, LowerRoman, UpperLetter, LowerLetter };

  Kind kind = Kind::None;
  int start = 1;
  QString before;  ///< The text in front of the number, or the bullet.
  QString after;

  bool operator==(const Numbering&) const = default;
};

/// A `\pn` group that says the same; `font` is the number of the bullet's font, -1 for none.
QByteArray NumberingGroup(const Numbering& numbering, int font = -1);

/// The numbering of one `{\*\pn ...}` group. Source: Rich Text Format Specification 1.9.1, "Bullets and Numbering".
Numbering ReadNumbering(std::string_view group, int codePage);

/// Whether an item's mark as text, a `{\pntext ...}` group, is that of the first item; none where it is no such number.
std::optional<bool> IsFirstMark(std::string_view group, const Numbering& numbering);

QTextListFormat::Style ListStyle(const Numbering& numbering);
/// The kind that a list of that style has.
Numbering::Kind KindOf(QTextListFormat::Style style);
/// What is in front of the numbers of a list of that format and behind them, and of which kind they are; from 1.
Numbering NumberingOf(const QTextListFormat& format);
/// Whether it is one of the list table, `\lsN`; any other is of the older notation.
bool IsOfListTable(const QTextListFormat& format);
/// The mark of item `index` (from 0) of a numbered list: "iv", "AB", "12".
QString NumberText(Numbering::Kind kind, int index);

/// The lists of `\listtable` and `\listoverridetable`. Source: Rich Text Format Specification 1.9.1, "List Table".
class ListTable {
 public:
  /// Adds the lists, or the overrides, of one group. What a number stands for it keeps, so that it is the same wherever
  /// the tables stand.
  void AddLists(std::string_view group);
  void AddOverrides(std::string_view group);
  /// Whether `\lsN` is a list.
  bool Contains(int listNumber) const { return m_overrides.contains(listNumber); }
  /// The numbering of a paragraph with `\lsN\ilvlN`; of kind None where the tables do not have it.
  Numbering At(int listNumber, int level) const;

 private:
  QHash<int, QList<Numbering>> m_lists;  ///< By `\listid`.
  QHash<int, int> m_overrides;           ///< `\ls` to `\listid`.
};

}  // namespace rtf
