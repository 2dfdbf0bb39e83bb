#pragma once

#include "host/mailing/selection/Addressees.h"

#include <QWidget>

class QCheckBox;
class QComboBox;

namespace host {

/// What letters and labels have in common: their order, and who shares one. Remembered for the user.
class PostingPanel : public QWidget {
  Q_OBJECT

 public:
  explicit PostingPanel(QWidget* parent = nullptr);

  /// What people who live together share: "carta", "etiqueta".
  void SetPiece(const QString& piece);
  void Fill(MailingWish& wish) const;
  PeopleOrder Order() const;
  QWidget* LastField() const;

 Q_SIGNALS:
  void Changed();
  void OrderChanged();

 private:
  void Remember() const;

  QComboBox* m_order;
  QCheckBox* m_together;
  QCheckBox* m_withoutAddress;
};

}  // namespace host
