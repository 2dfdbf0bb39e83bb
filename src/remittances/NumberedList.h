#pragma once

#include "framework/ListHelper.h"

#include <QString>

class QComboBox;
class QLineEdit;

namespace remittances {

/// A list of banks or branches and the box for the number of the selected one, in step with each other through the
/// host's list helper. It selects in silence: what depends on the selection is its user's affair.
class NumberedList {
 public:
  /// `keyColumn` is "IDBanco" or "IDSucursal". The controls are the dialog's.
  NumberedList(const framework::ListHelper& lists, QComboBox* list, QLineEdit* box, const QString& keyColumn);

  /// Writes the number of the selected record into the box, nothing for none.
  void ShowNumber();
  /// The same for a record that need not be listed: a stored one may be deleted. 0 is none.
  void ShowNumberOf(qint32 id);
  /// Selects the record whose number stands in the box, nothing when there is none; what was typed then stays. True
  /// when something else, or nothing, is selected now. A box that shows what was written into it selects nothing new:
  /// several records may have one number.
  bool SelectTyped();

 private:
  framework::ListHelper m_lists;
  QComboBox* m_list;
  QLineEdit* m_box;
  QString m_keyColumn;
  QString m_shown;
};

}  // namespace remittances
