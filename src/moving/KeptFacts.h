#pragma once

#include "moving/TableShape.h"

#include <vector>

namespace moving {

/// The facts of all rows of a table, packed: a file may have millions, and each row's lists would take more memory than
/// what they hold.
class KeptFacts {
 public:
  /// All rows have as many references and matches as the first.
  void Append(const RowFacts& facts);
  RowFacts At(std::size_t row) const;
  void Skip(std::size_t row) { m_rows[row].isSkipped = true; }
  qint64 KeyAt(std::size_t row) const { return m_rows[row].key; }
  std::size_t Count() const { return m_rows.size(); }

 private:
  void AppendText(const QString& text);

  struct Row {
    qint64 key = 0;
    quint64 content = 0;
    qsizetype text = 0;  ///< Where its matches begin in m_text, one behind the other, and `alike` behind them.
    bool isLive = true;
    bool isGranted = false;
    bool isRefused = false;
    bool isSkipped = false;
  };

  std::vector<Row> m_rows;
  std::size_t m_referencesOfRow = 0;
  std::size_t m_textsOfRow = 0;
  std::vector<qint64> m_references;
  std::vector<int> m_lengths;  ///< Of the matches and `alike`.
  QString m_text;
};

}  // namespace moving
