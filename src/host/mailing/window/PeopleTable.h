#pragma once

#include "host/mailing/window/PeopleModel.h"

#include <QElapsedTimer>
#include <QTableView>

namespace host {

/// The table of people: Space ticks what is selected, typing goes to a name.
class PeopleTable : public QTableView {
  Q_OBJECT

 public:
  explicit PeopleTable(QWidget* parent = nullptr);

  PeopleModel& People() { return *m_people; }
  const PeopleModel& People() const { return *m_people; }
  /// Makes somebody the current one, without a signal; nothing happens for somebody who is not shown.
  void GoTo(int person);
  /// What an empty table says.
  void SetEmptyText(const QString& text);
  QSize sizeHint() const override;

 Q_SIGNALS:
  /// The user went to somebody.
  void Reached(int person);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void keyboardSearch(const QString& typed) override;
  void paintEvent(QPaintEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

 private:
  void TickSelected();

  PeopleModel* m_people;
  QString m_emptyText;
  QString m_typed;
  QElapsedTimer m_typedAt;
  bool m_isLed = false;  ///< The program moves, not the user.
};

}  // namespace host
