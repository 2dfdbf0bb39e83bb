#pragma once

#include "host/mailing/pieces/Choices.h"

#include <QWidget>

class QGridLayout;
class QMenu;

namespace host {

/// The conditions of a selection, a button each, which opens it to be changed, with one beside it that takes it away;
/// and a button for further ones.
class ConditionBar : public QWidget {
  Q_OBJECT

 public:
  explicit ConditionBar(QWidget* parent = nullptr);

  void SetChoices(const Choices& choices);
  void Show(const Conditions& conditions);
  const Conditions& Shown() const { return m_conditions; }
  /// Tab comes to the bar from there.
  void ComeAfter(QWidget& field);

 Q_SIGNALS:
  /// By the user.
  void Changed();

 private:
  void Arrange();
  void AddChip(const QString& name, const QString& text, const std::function<void()>& edit,
               const std::function<void(Conditions&)>& remove);
  void FillMenu(QMenu& menu);
  void Edit(Condition condition);
  void EditDates();
  void Take(const Conditions& conditions);
  QString TextOf(Condition condition) const;
  QString DatesText() const;

  std::array<QList<Choice>, conditionCount> m_records;
  Conditions m_conditions;
  QGridLayout* m_grid;
  QWidget* m_before = nullptr;
};

}  // namespace host
