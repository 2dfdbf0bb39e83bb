#pragma once

#include "host/access/OfficePolicy.h"
#include "host/records/ComponentBridge.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QSpinBox;

namespace host {

/// The settings that hold for everybody who uses the database. Who may not change them sees them, and why.
class OfficePage : public QWidget {
  Q_OBJECT

 public:
  /// Borrows the bridge. An error at reading is what the page says.
  OfficePage(ComponentBridge& bridge, bool isFile, QWidget* parent = nullptr);

  /// Stores what was changed. Raises what was refused, and the errors of the database; nothing is stored then.
  void Store();

 private:
  void Build();
  void Read();
  QString WhyNot() const;
  OfficePolicy Chosen() const;

  ComponentBridge& m_bridge;
  bool m_isFile;
  OfficePolicy m_stored;
  QLabel* m_reason;
  QLineEdit* m_name;
  QSpinBox* m_idle;
  QSpinBox* m_log;
  QSpinBox* m_copies;
};

}  // namespace host
