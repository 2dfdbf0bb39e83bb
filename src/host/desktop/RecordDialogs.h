#pragma once

#include "host/desktop/Strip.h"
#include "host/records/ComponentBridge.h"
#include "host/records/NodeCatalog.h"
#include "host/records/RecordHold.h"
#include "host/records/SaveCheck.h"

#include <QObject>
#include <QString>

class QWidget;

namespace host {

/// Opens the component's dialogs as one of several people at the same records. A record that somebody deleted is not
/// opened; one that somebody holds is looked at; nothing is saved below a deleted record without a word. What there is
/// to say comes as strips.
class RecordDialogs : public QObject {
  Q_OBJECT

 public:
  /// Borrows both; `window` is below the boxes.
  RecordDialogs(ComponentBridge& bridge, QWidget* window);

  // These show errors, and the window goes on.

  void Add(const Node& node);
  /// `name` is how the list calls the record.
  void Modify(const Node& node, int id, const QString& name);
  /// A new branch of the bank, which is not locked for that: several people may add branches to it.
  void AddBranch(int bankId, const QString& name);

  /// A request whose dialog was open before.
  void OpenAgain(const ComponentRequest& request);

  /// Any request; `node` is where what it is about stands in the tree, a branch below its bank. Errors leave it.
  void Open(const Node& node, const ComponentRequest& request, const QString& name);

 Q_SIGNALS:
  void Told(const host::StripText& content);
  /// The deletion of that note is to be undone.
  void RecoveryWanted(int note);
  /// The record is to be opened.
  void RecordWanted(const host::Node& node, int id);

 private:
  void Guarded(const Node& node, const ComponentRequest& request, const QString& name);
  void Modify(const Node& node, ComponentRequest request, const QString& name);
  /// `hold` is that of the request's record; nullptr for a request that holds none.
  void Show(const Node& node, ComponentRequest request, const RecordHold* hold = nullptr);
  void TellOfDeletion(const Node& node, int id, const DeletedRecord& deleted, const QString& name);
  void TellOfLockRelease(const Node& node, const Change& release, bool saved);
  void TellOfLoss(const LostSave& lost);
  /// Whether the user wants to look at a record that somebody else holds.
  bool WantsToLook(const Node& node, const LockHolder& holder, const QString& name);

  ComponentBridge& m_bridge;
  QWidget* m_window;
};

}  // namespace host
