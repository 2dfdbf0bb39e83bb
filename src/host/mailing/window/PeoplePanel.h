#pragma once

#include "host/mailing/pieces/Choices.h"
#include "host/mailing/selection/PeopleList.h"
#include "host/mailing/window/PeopleModel.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;

namespace host {

class ConditionBar;
class PeopleTable;

/// Who gets mail: a saved selection, its conditions, and a list with a box for each person.
class PeoplePanel : public QWidget {
  Q_OBJECT

 public:
  explicit PeoplePanel(QWidget* parent = nullptr);

  /// Selections by their names and what conditions can ask for. What is being chosen stays.
  void SetChoices(const Choices& choices);
  /// A selection as it was read. It is shown when its people have come.
  void Take(const SavedSelection& selection);
  /// Leaves the name of what could not be read, and nobody chosen.
  void TakeNobody();
  void SetPeople(std::vector<ListedPerson> people);
  void SetNotes(const MailingNotes& notes);
  /// How many letters or labels that makes, "306 cartas".
  void SetPieces(const QString& text);
  /// Why there is no list.
  void SetError(const QString& text);

  /// As it is now.
  const SavedSelection& Chosen() const { return m_selection; }
  /// As it was read.
  const SavedSelection& Stored() const { return m_stored; }
  bool IsChanged() const { return m_selection != m_stored; }
  /// Names a selection in the list of saved ones, and nothing else.
  void ShowSaved(int id);
  PeopleTable& Table() { return *m_table; }
  void ShowOnly(PeopleFilter filter);

 Q_SIGNALS:
  /// The user wants another saved selection.
  void SelectionWanted(int id);
  /// Other people may be in the list now.
  void ConditionsChanged();
  /// Boxes were ticked.
  void TicksChanged();

 private:
  QWidget* MakeSelectionRow();
  QWidget* MakeSearchRow();
  QWidget* MakeTickRow();
  void Tick(int person, bool taken);
  void TickShown(bool taken);
  void TakeConditions();
  void ShowTicks();
  void ShowCount();

  SavedSelection m_selection;
  SavedSelection m_stored;
  QString m_pieces;
  QLabel* m_count;
  QComboBox* m_saved;
  ConditionBar* m_conditions;
  QLineEdit* m_search;
  QComboBox* m_filter;
  PeopleTable* m_table;
};

}  // namespace host
