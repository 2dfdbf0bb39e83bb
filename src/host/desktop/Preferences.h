#pragma once

#include "host/look/Look.h"

#include <QDialog>

class QComboBox;
class QSpinBox;

namespace host {

/// How the program looks to this user of this machine. What is accepted is stored for the next start.
class Preferences : public QDialog {
  Q_OBJECT

 public:
  explicit Preferences(QWidget* parent = nullptr);

  void accept() override;

 private:
  void Show(const Look& look);

  QComboBox* m_colours;
  QSpinBox* m_text;
};

}  // namespace host
