#include "EveryDialog.h"

#include "host/look/Colours.h"
#include "host/look/Look.h"
#include "host/look/Palettes.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTextEdit>

#include <algorithm>

using namespace Qt::StringLiterals;

using host::Look;
using support::DialogUser;
using support::TestHost;

namespace {

// But for an editor of text, whose caret shows where it is.
QList<QWidget*> KeyboardControls(const DialogUser& dialog) {
  QList<QWidget*> controls = dialog.Dialog()->findChildren<QWidget*>();
  controls.removeIf([&](QWidget* control) {
    return (control->focusPolicy() & Qt::TabFocus) == 0 || qobject_cast<QTextEdit*>(control) != nullptr ||
           control->focusProxy() != nullptr || !control->isEnabledTo(dialog.Dialog()) ||
           !control->isVisibleTo(dialog.Dialog());
  });
  return controls;
}

qsizetype PixelsOf(QRgb colour, const QImage& image) {
  qsizetype count = 0;
  for (int y = 0; y < image.height(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    count += std::count(line, line + image.width(), colour);
  }
  return count;
}

qsizetype PixelsIn(QWidget& control, const QColor& colour) {
  const QPoint corner = control.mapTo(control.window(), QPoint());
  const QImage seen = control.window()->grab(QRect(corner, control.size())).toImage();
  return PixelsOf(colour.rgb(), seen.convertToFormat(QImage::Format_RGB32));
}

/// The controls that have no ring with the focus, or have one without it, or no line around them then.
QStringList WithoutRing(const DialogUser& dialog) {
  QStringList names;
  const QColor ring = host::RingColour(QApplication::palette());
  const QColor line = host::LineColour(QApplication::palette());
  const QList<QWidget*> controls = KeyboardControls(dialog);
  for (QWidget* control : controls) {
    (control == controls.first() ? controls.last() : controls.first())->setFocus(Qt::TabFocusReason);
    const qsizetype without = PixelsIn(*control, ring);
    // A circle has no pixel of just that colour.
    const bool isCircle = qobject_cast<QRadioButton*>(control) != nullptr;
    const bool hasLine = isCircle || controls.size() == 1 || PixelsIn(*control, line) >= control->height() / 2;
    control->setFocus(Qt::TabFocusReason);
    const qsizetype added = PixelsIn(*control, ring) - without;
    if (added < control->height() || !hasLine) {
      names.append(u"%1 %2"_s.arg(control->objectName()).arg(added));
    }
  }
  return names;
}

/// The controls' names as Tab goes through them, after the one that has the focus.
QStringList TabOrder(const DialogUser& dialog) {
  const QList<QWidget*> controls = KeyboardControls(dialog);
  QStringList names{dialog.Focused()};
  for (QWidget* next = dialog.Dialog()->nextInFocusChain(); next != dialog.Dialog(); next = next->nextInFocusChain()) {
    if (controls.contains(next)) {
      names.append(next->objectName());
    }
  }
  return names;
}

/// What is out of sight: of the window, the default button, and each control while it has the focus.
QStringList OutOfSight(const DialogUser& dialog) {
  QDialog* window = dialog.Dialog();
  QStringList names;
  const QSize screen = window->screen()->availableSize();
  if (window->width() > screen.width() || window->height() > screen.height()) {
    names.append(u"%1x%2"_s.arg(window->width()).arg(window->height()));
  }
  const QList<QWidget*> controls = KeyboardControls(dialog);
  for (QWidget* control : controls) {
    control->setFocus(Qt::OtherFocusReason);
    QCoreApplication::processEvents();
    const auto* button = qobject_cast<QPushButton*>(control);
    const bool isWhole = control->visibleRegion().boundingRect().size() == control->size();
    if (control->visibleRegion().isEmpty() || (button != nullptr && button->isDefault() && !isWhole)) {
      names.append(control->objectName());
    }
  }
  for (QPushButton* button : window->findChildren<QPushButton*>()) {
    if (button->isDefault() && button->visibleRegion().boundingRect().size() != button->size()) {
      names.append(button->objectName());
    }
  }
  return names;
}

struct Pair {
  QPalette::ColorRole text;
  QPalette::ColorRole ground;
};

}  // namespace

/// How every dialog looks in the host's style.
class tst_dialog_look : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Contrasts_data() {
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("light") << host::LightPalette();
    QTest::newRow("dark") << host::DarkPalette();
  }

  void Contrasts() {
    QFETCH(QPalette, palette);
    const Pair texts[] = {{QPalette::WindowText, QPalette::Window},
                          {QPalette::Text, QPalette::Base},
                          {QPalette::Text, QPalette::AlternateBase},
                          {QPalette::ButtonText, QPalette::Button},
                          {QPalette::PlaceholderText, QPalette::Base},
                          {QPalette::ToolTipText, QPalette::ToolTipBase},
                          {QPalette::HighlightedText, QPalette::Highlight},
                          {QPalette::Link, QPalette::Window},
                          {QPalette::Link, QPalette::Base},
                          {QPalette::LinkVisited, QPalette::Window}};
    for (const Pair& pair : texts) {
      const double contrast = host::Contrast(palette.color(pair.text), palette.color(pair.ground));
      QVERIFY2(contrast >= 4.5, qPrintable(u"%1 on %2: %3"_s.arg(pair.text).arg(pair.ground).arg(contrast)));
    }
    for (const QPalette::ColorRole ground : {QPalette::Window, QPalette::Base, QPalette::Button}) {
      QVERIFY(host::Contrast(host::LineColour(palette), palette.color(ground)) >= 3);
      QVERIFY(host::Contrast(host::RingColour(palette), palette.color(ground)) >= 3);
    }
    for (const host::StripTone tone : {host::StripTone::News, host::StripTone::Hint, host::StripTone::Attention}) {
      const QPalette strip = host::StripPalette(tone);
      QVERIFY(host::Contrast(strip.color(QPalette::WindowText), strip.color(QPalette::Window)) >= 4.5);
      QVERIFY(host::Contrast(host::LineColour(strip), strip.color(QPalette::Window)) >= 3);
      QVERIFY(host::Contrast(host::RingColour(strip), strip.color(QPalette::Window)) >= 3);
    }
    // The numbers of the public definition: black on white, and a grey that just carries text.
    QCOMPARE(host::Contrast(Qt::black, Qt::white), 21.0);
    QVERIFY(std::abs(host::Contrast(QColor(0x767676), Qt::white) - 4.54) < 0.01);
  }

  void Focus_data() { AddEveryDialog(); }

  void Focus() {
    QFETCH(int, node);
    QFETCH(int, id);
    for (const Look::Colours colours : {Look::Colours::Light, Look::Colours::Dark}) {
      host::UseLook({.colours = colours});
      TestHost host;
      QStringList without;
      EXPECT_CLEAN(host, OpenEach(host, node, id, [&](const DialogUser& dialog) { without = WithoutRing(dialog); }));
      QCOMPARE(without.join(u", "), QString());
    }
  }

  void SmallScreen_data() { AddEveryDialog(); }

  void SmallScreen() {
    QFETCH(int, node);
    QFETCH(int, id);
    QStringList hidden;
    QStringList orders[2];
    for (const int percent : {100, 150}) {
      host::UseLook({.textPercent = percent});
      TestHost host;
      EXPECT_CLEAN(host, OpenEach(host, node, id, [&](const DialogUser& dialog) {
                     orders[percent / 150] = TabOrder(dialog);
                     hidden += OutOfSight(dialog);
                   }));
    }
    QCOMPARE(hidden.join(u", "), QString());
    QCOMPARE(orders[1], orders[0]);
    host::UseLook({});
  }
};

KEL_TEST(tst_dialog_look);
#include "tst_dialog_look.moc"
