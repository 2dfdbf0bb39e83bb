#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

namespace host {

/// `text` as searches compare it: without regard to case, accents and compatibility forms ("Ñu" is "nu", "1ª" is
/// "1a").
QString FoldForSearch(const QString& text);

/// What the user types into the search box: every word of it must occur, anywhere and in any order.
class RecordFilter {
 public:
  RecordFilter() = default;
  explicit RecordFilter(const QString& typed);

  /// True when nothing was typed but blanks, which every record passes.
  bool IsEmpty() const { return m_words.isEmpty(); }
  /// `folded` is a text made by FoldForSearch.
  bool Accepts(QStringView folded) const;

 private:
  QStringList m_words;
};

}  // namespace host
