#pragma once

#include <QStringList>
#include <QStringView>

namespace host {

/// What the user types into the search box: every word of it must occur, anywhere and in any order.
class RecordFilter {
 public:
  RecordFilter() = default;
  explicit RecordFilter(const QString& typed);

  /// True when nothing was typed but blanks, which every record passes.
  bool IsEmpty() const { return m_words.isEmpty(); }
  /// `folded` is a text made by texts::FoldForSearch.
  bool Accepts(QStringView folded) const;

 private:
  QStringList m_words;
};

}  // namespace host
