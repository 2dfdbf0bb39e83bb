#include "moving/DeletedRows.h"

#include <QHash>
#include <QSet>

namespace moving {

void SkipDeletedRows(Survey& survey) {
  // By tables here, the keys of the file that rows refer to. Tables that others refer to come last.
  QHash<const database::Table*, QSet<qint64>> used;
  for (auto rule = TableRules().rbegin(); rule != TableRules().rend(); ++rule) {
    for (SurveyedTable& table : survey.tables) {
      if (!table.match || table.match->rule != &*rule) {
        continue;
      }
      const QSet<qint64>& keys = used[rule->table];
      for (RowFacts& row : table.rows) {
        row.isSkipped = !row.isLive && !keys.contains(row.key);
      }
      for (const RowFacts& row : table.rows) {
        for (qsizetype i = 0; !row.isSkipped && i < row.references.size(); ++i) {
          used[table.shape->References()[i].target].insert(row.references[i]);
        }
      }
    }
  }
}

}  // namespace moving
