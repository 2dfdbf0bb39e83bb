#include "moving/Outline.h"

#include <numeric>

namespace moving {

namespace {

class Outliner : public SourceListener {
 public:
  void BeginTable(const SourceTable& table) override { outline.tables.append({table, 0, {}}); }
  void Row(const SourceRow& row) override {
    constexpr qint64 shown = 20;
    OutlinedTable& table = outline.tables.last();
    if (++table.rows <= shown) {
      table.first.append(row);
    }
  }
  void EndTable(qint64 /*missing*/) override {}
  void Linked(const QString& name) override { outline.elsewhere.append(name); }
  void Unreadable(const QString& name) override { outline.unreadable.append(name); }

  Outline outline;
};

}  // namespace

qint64 Outline::Rows() const {
  return std::accumulate(tables.begin(), tables.end(), qint64(0),
                         [](qint64 sum, const OutlinedTable& table) { return sum + table.rows; });
}

Outline ReadOutline(const QString& path, const ReadWishes& wishes, const database::Stop& stop) {
  Outliner outliner;
  ReadFile(path, wishes, outliner, stop);
  return outliner.outline;
}

}  // namespace moving
