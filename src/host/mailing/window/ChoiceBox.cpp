#include "host/mailing/window/ChoiceBox.h"

#include <QComboBox>
#include <QSignalBlocker>

#include <algorithm>

namespace host {

void FillBox(QComboBox& box, const QList<Choice>& choices) {
  const QVariant before = box.currentData();
  const QSignalBlocker quiet(box);
  // A long name does not widen the window.
  box.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  box.clear();
  for (const Choice& choice : choices) {
    box.addItem(choice.name, choice.id);
  }
  box.setCurrentIndex(std::max(0, box.findData(before)));
}

}  // namespace host
