#pragma once

#include "host/desktop/RecordPreview.h"
#include "host/records/DatabaseThread.h"
#include "host/records/NodeCatalog.h"
#include "host/records/Relations.h"

#include <QScrollArea>
#include <QTimer>

class QComboBox;
class QLabel;

namespace host {

class RecordList;

/// What there is to know of the chosen record, below its list: who uses it, who changed it last, what belongs to it. It
/// is read in the background once the selection rests; while it is hidden nothing is read. What the list above leaves
/// no room for is scrolled to.
class DetailPane : public QScrollArea {
  Q_OBJECT

 public:
  /// Borrows the thread. `velumar` is the kind of installation, see CountUses.
  DetailPane(DatabaseThread& thread, bool velumar, QWidget* parent = nullptr);

  /// The record to tell of; it is the same one as before where only its name is another. The node must outlive the
  /// pane.
  void Show(const Node& node, int id, const QString& name);
  /// Tells of none; `text` says why.
  void ShowNothing(const QString& text);
  /// As small as the list above needs it.
  QSize minimumSizeHint() const override { return {0, 0}; }
  /// Something was written: what is shown is read again.
  void Refresh();

 Q_SIGNALS:
  /// The records of another node that use the shown one are to be seen.
  void UsesWanted(int nodeId, const QString& table, int id);
  /// A record that belongs to the shown one is to be opened.
  void RecordWanted(int nodeId, int id, const QString& name);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  struct Shown {
    RecordDetail detail;
    RecordPreview preview;
  };

  void Build();
  void Read();
  void Take(const Shown& shown);
  void ShowRelated(int index);
  void ShowList(const RelatedRecords& related);
  void OpenRelated();

  const bool m_velumar;
  const Node* m_node = nullptr;
  int m_id = 0;
  bool m_isAnother = true;  ///< Than the one whose related records are in the list.
  QList<RelatedRecords> m_related;
  QTimer m_rest;
  QLabel* m_title;
  QLabel* m_uses;
  QLabel* m_change;
  QComboBox* m_kinds;
  QLabel* m_kind;  ///< Of one kind.
  RecordList* m_list;
  QLabel* m_more;
  QLabel* m_text;
  SheetThumbnail* m_sheet;
  Reading<Shown> m_reading;
};

}  // namespace host
