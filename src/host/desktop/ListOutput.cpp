#include "host/desktop/ListOutput.h"

#include "host/help/HelpDesk.h"
#include "host/paper/ExportDialog.h"
#include "host/paper/ListPrintDialog.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString helpTopic = u"listas"_s;

ListTable Table(const RecordList& list, const ListHead& head) {
  return {.title = head.title,
          .search = head.search,
          .origin = head.origin,
          .user = head.user,
          .rows = list.Records().Extract(),
          .columns = list.ShownColumns()};
}

ListTable Selected(const RecordList& list, const ListHead& head) {
  ListTable table = Table(list, head);
  table.rows.rows.clear();
  if (const QList<int> rows = list.SelectedRows(); !rows.isEmpty()) {
    table.rows = list.Records().Extract(rows);
  }
  return table;
}

}  // namespace

QString ExportShownList(const RecordList& list, const ListHead& head, QWidget* parent) {
  ExportDialog dialog(Table(list, head), Selected(list, head), parent);
  dialog.setProperty(HelpDesk::topicProperty, helpTopic + u"#exportar"_s);
  dialog.exec();
  return dialog.News();
}

QString PrintShownList(const RecordList& list, const ListHead& head, const QString& connectionString, QWidget* parent) {
  ListPrintDialog dialog(Table(list, head), Selected(list, head), connectionString, parent);
  dialog.setProperty(HelpDesk::topicProperty, helpTopic + u"#imprimir"_s);
  dialog.exec();
  return dialog.News();
}

}  // namespace host
