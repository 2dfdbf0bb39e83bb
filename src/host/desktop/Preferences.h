#pragma once

#include "host/look/Look.h"
#include "host/records/ComponentBridge.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QSpinBox;
class QTabWidget;

namespace host {

class OfficePage;

/// What this user of this machine wants of the program, stored for the next start, and what holds for everybody who
/// uses the database.
class Preferences : public QDialog {
  Q_OBJECT

 public:
  /// Borrows the bridge.
  Preferences(ComponentBridge& bridge, bool isFile, QWidget* parent = nullptr);

  /// What is refused is shown, and the dialog stays.
  void accept() override;

 private:
  QWidget* OwnPage(bool isFile);
  void Show(const Look& look);

  QString m_title;
  QComboBox* m_colours;
  QSpinBox* m_text;
  QCheckBox* m_copies;
  OfficePage* m_office;
  QTabWidget* m_pages;
};

}  // namespace host
