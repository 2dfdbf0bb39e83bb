#include "support/WindowFaults.h"

#include <QAccessible>
#include <QComboBox>
#include <QCoreApplication>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace support {
namespace {

bool ShowsFocus(QWidget& control) {
  control.setFocus(Qt::TabFocusReason);
  // As an area does by itself where Tab brings the focus.
  for (QWidget* around = control.parentWidget(); around != nullptr; around = around->parentWidget()) {
    if (auto* area = qobject_cast<QScrollArea*>(around)) {
      area->ensureWidgetVisible(&control);
    }
  }
  const QRect place(control.mapTo(control.window(), QPoint()), control.size());
  const QImage with = control.window()->grab(place).toImage();
  control.clearFocus();
  return control.window()->grab(place).toImage() != with;
}

// At the width that it has.
int NeededHeight(const QWidget& control) {
  return control.hasHeightForWidth() ? control.heightForWidth(control.width()) : control.sizeHint().height();
}

// What a layout needs goes up from window to window, a turn of the event loop for each.
void LetLayoutsSettle() {
  constexpr int turns = 6;
  for (int turn = 0; turn < turns; ++turn) {
    QCoreApplication::processEvents();
  }
}

class Look {
 public:
  explicit Look(QWidget& window) : m_window(window) {}

  QStringList Faults() {
    Names();
    Mnemonics();
    Texts();
    Order();
    Focus();
    return m_faults;
  }

 private:
  template <typename Control = QWidget>
  QList<Control*> Shown() const {
    QList<Control*> controls = m_window.findChildren<Control*>();
    controls.removeIf([&](QWidget* control) { return control->window() != &m_window || !control->isVisible(); });
    return controls;
  }

  // In the order of Tab.
  QList<QWidget*> Reached() const {
    QList<QWidget*> controls;
    const QList<QWidget*> shown = Shown();
    for (QWidget* next = m_window.nextInFocusChain(); next != &m_window; next = next->nextInFocusChain()) {
      const bool isPart = next->focusProxy() != nullptr || next->objectName().startsWith("qt_"_L1);
      if ((next->focusPolicy() & Qt::TabFocus) != 0 && !isPart && shown.contains(next)) {
        controls.append(next);
      }
    }
    return controls;
  }

  static QString Called(const QWidget& control) {
    return control.objectName().isEmpty() ? QString::fromLatin1(control.metaObject()->className())
                                          : control.objectName();
  }
  void Fault(const QWidget& control, const QString& what) { m_faults.append(Called(control) + u": "_s + what); }

  void Names() {
    QHash<QString, QWidget*> known;
    for (QWidget* control : Reached()) {
      if (qobject_cast<QTabBar*>(control) != nullptr) {
        continue;  // It is told by its tabs.
      }
      QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(control);
      const QString name = seen != nullptr ? seen->text(QAccessible::Name).trimmed() : QString();
      if (name.isEmpty()) {
        Fault(*control, u"no name"_s);
      } else if (name.endsWith(u':') || name.contains("(*)"_L1)) {
        Fault(*control, u"marks in the name "_s + name);
      } else if (QWidget* other = known.value(name)) {
        Fault(*control, u"named like %1: %2"_s.arg(Called(*other), name));
      } else {
        known.insert(name, control);
      }
    }
  }

  void Mnemonics() {
    QList<QPair<QString, QString>> texts;
    for (QLabel* label : Shown<QLabel>()) {
      if (label->buddy() != nullptr && label->buddy()->isEnabled()) {
        texts.append({Called(*label), label->text()});
      }
    }
    for (QAbstractButton* button : Shown<QAbstractButton>()) {
      if (button->isEnabled()) {
        texts.append({Called(*button), button->text()});
      }
    }
    for (QGroupBox* group : Shown<QGroupBox>()) {
      texts.append({Called(*group), group->title()});
    }
    for (QTabBar* tabs : Shown<QTabBar>()) {
      for (int tab = 0; tab < tabs->count(); ++tab) {
        texts.append({Called(*tabs), tabs->tabText(tab)});
      }
    }
    for (QMenuBar* bar : Shown<QMenuBar>()) {
      for (QAction* action : bar->actions()) {
        texts.append({action->objectName(), action->text()});
      }
    }
    SameMnemonics(texts);
    for (QMenu* menu : m_window.findChildren<QMenu*>()) {
      QList<QPair<QString, QString>> items;
      for (QAction* action : menu->actions()) {
        items.append({action->objectName(), action->text()});
      }
      SameMnemonics(items);
    }
  }

  void SameMnemonics(const QList<QPair<QString, QString>>& texts) {
    QHash<QString, QString> known;
    for (const auto& [control, text] : texts) {
      const QString key = QKeySequence::mnemonic(text).toString();
      if (!key.isEmpty() && known.contains(key)) {
        m_faults.append(u"%1: %2 as %3"_s.arg(control, key, known[key]));
      }
      known.insert(key, control);
    }
  }

  void Texts() {
    for (QLabel* label : Shown<QLabel>()) {
      const bool isMeantToBe = label->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored;
      const bool isWide = !isMeantToBe && !label->wordWrap() && label->sizeHint().width() > label->width();
      if (!label->text().isEmpty() && (isWide || NeededHeight(*label) > label->height())) {
        Fault(*label, u"cut off: "_s + label->text());
      }
    }
    for (QAbstractButton* button : Shown<QAbstractButton>()) {
      if (qobject_cast<QLineEdit*>(button->parentWidget()) != nullptr) {
        continue;  // An icon: its text is only told.
      }
      const bool isWide = !button->hasHeightForWidth() && button->sizeHint().width() > button->width();
      if (!button->text().isEmpty() && (isWide || NeededHeight(*button) > button->height())) {
        Fault(*button, u"cut off: "_s + button->text());
      }
    }
    for (QGroupBox* group : Shown<QGroupBox>()) {
      if (group->minimumSizeHint().width() > group->width()) {
        Fault(*group, u"cut off: "_s + group->title());
      }
    }
    for (QHeaderView* header : Shown<QHeaderView>()) {
      for (int section = 0; header->orientation() == Qt::Horizontal && section < header->count(); ++section) {
        if (!header->isSectionHidden(section) && header->sectionSizeHint(section) > header->sectionSize(section)) {
          Fault(*header->parentWidget(),
                u"cut off: "_s + header->model()->headerData(section, Qt::Horizontal).toString());
        }
      }
    }
  }

  void Order() {
    QWidget* before = nullptr;
    for (QWidget* control : Reached()) {
      if (before != nullptr && GoesBack(*before, *control)) {
        Fault(*control, u"reached after %1"_s.arg(Called(*before)));
      }
      before = control;
    }
  }

  // Up again in the same column, or to the left in the same row, of one group.
  bool GoesBack(const QWidget& from, const QWidget& to) const {
    if (from.parentWidget() != to.parentWidget()) {
      return false;
    }
    const QRect left(from.mapTo(&m_window, QPoint()), from.size());
    const QRect right(to.mapTo(&m_window, QPoint()), to.size());
    const bool isBeside = right.top() <= left.bottom() && left.top() <= right.bottom();
    return isBeside ? right.right() <= left.left() : right.bottom() < left.top() && right.left() < left.right();
  }

  void Focus() {
    for (QWidget* control : Reached()) {
      if (control->isEnabled() && !ShowsFocus(*control)) {
        Fault(*control, u"the focus shows nowhere"_s);
      }
    }
  }

  QWidget& m_window;
  QStringList m_faults;
};

}  // namespace

QStringList WindowFaults(QWidget& window) {
  LetLayoutsSettle();
  QStringList faults = Look(window).Faults();
  for (QTabWidget* tabs : window.findChildren<QTabWidget*>()) {
    const int shown = tabs->currentIndex();
    for (int page = 0; page < tabs->count(); ++page) {
      if (page != shown) {
        tabs->setCurrentIndex(page);
        LetLayoutsSettle();
        faults += Look(window).Faults();
      }
    }
    tabs->setCurrentIndex(shown);
  }
  faults.removeDuplicates();
  return faults;
}

}  // namespace support
