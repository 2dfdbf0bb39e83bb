#pragma once

#include "host/mailing/pieces/Choices.h"
#include "host/mailing/window/MailingContext.h"

#include <QObject>

class QAction;
class QMenu;
class QMainWindow;

namespace host {

class BackgroundReader;
class PeoplePanel;

/// What can be done with saved selections: kept, renamed, shared, deleted.
class SelectionCommands : public QObject {
  Q_OBJECT

 public:
  /// Borrows all of them.
  SelectionCommands(const MailingContext& context, BackgroundReader& reader, PeoplePanel& people, QMainWindow& window);

  void FillMenu(QMenu& menu);
  void SetChoices(const QList<StoredSelection>& selections);
  /// After a change of what is chosen.
  void Update();
  /// True where what was changed may go: nothing was, or the user said so.
  bool MayLeave();

 Q_SIGNALS:
  /// Something was written; that selection is to be chosen, 0 for none.
  void Written(int selection);

 private:
  /// Runs in the reader's thread and gives the selection to choose.
  using Write = std::function<int(adodb::Connection& connection)>;

  const StoredSelection* Chosen() const;
  bool MayChangeChosen() const;
  QString AskForName(const QString& title, const QString& before);
  void Do(Write write);
  void Save();
  void SaveAs();
  void Rename();
  void Share(bool isShared);
  void Delete();

  const MailingContext& m_context;
  BackgroundReader& m_reader;
  PeoplePanel& m_people;
  QMainWindow& m_window;
  QList<StoredSelection> m_selections;
  QAction* m_save;
  QAction* m_saveAs;
  QAction* m_rename;
  QAction* m_share;
  QAction* m_delete;
};

}  // namespace host
