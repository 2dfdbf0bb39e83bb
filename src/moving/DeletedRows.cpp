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
      for (std::size_t i = 0; i < table.rows.Count(); ++i) {
        if (!table.rows.At(i).isLive && !keys.contains(table.rows.KeyAt(i))) {
          table.rows.Skip(i);
        }
      }
      for (std::size_t at = 0; at < table.rows.Count(); ++at) {
        const RowFacts row = table.rows.At(at);
        for (qsizetype i = 0; !row.isSkipped && i < row.references.size(); ++i) {
          used[table.shape->References()[i].target].insert(row.references[i]);
        }
      }
    }
  }
}

}  // namespace moving
