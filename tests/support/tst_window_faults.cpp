#include "support/TestProgram.h"
#include "support/WindowFaults.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

/// What the checks of windows are there to see, in a window that has it all.
class tst_window_faults : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void EachKindIsSeen() {
    QWidget window;
    window.resize(400, 300);
    const auto place = [&](QWidget* control, const char* name, int x, int y) {
      control->setParent(&window);
      control->setObjectName(QString::fromLatin1(name));
      control->move(x, y);
    };
    auto* nameless = new QLineEdit;
    place(nameless, "nameless", 10, 10);
    auto* marked = new QLineEdit;
    place(marked, "marked", 10, 50);
    marked->setAccessibleName(u"(*) Nombre:"_s);
    place(new QPushButton(u"&Uno"_s), "one", 10, 90);
    auto* again = new QPushButton(u"&Uno"_s);
    place(again, "again", 200, 90);
    auto* cut = new QLabel(u"Una etiqueta muy larga"_s);
    place(cut, "cut", 10, 130);
    cut->setFixedWidth(20);
    auto* blind = new QWidget;
    place(blind, "blind", 10, 170);
    blind->setFocusPolicy(Qt::StrongFocus);
    blind->setAccessibleName(u"Ciego"_s);
    auto* up = new QPushButton(u"Arriba"_s);
    place(up, "up", 10, 140);
    window.show();
    QStringList faults = support::WindowFaults(window);
    faults.sort();
    // Buttons of the style without the host's ring show their focus to nobody who did not use the keyboard.
    QCOMPARE(faults, QStringList({u"again: Alt+U as one"_s, u"again: named like one: Uno"_s,
                                  u"again: the focus shows nowhere"_s, u"blind: the focus shows nowhere"_s,
                                  u"cut: cut off: Una etiqueta muy larga"_s, u"marked: marks in the name (*) Nombre:"_s,
                                  u"nameless: no name"_s, u"one: the focus shows nowhere"_s,
                                  u"up: reached after blind"_s, u"up: the focus shows nowhere"_s}));
  }
};

KEL_TEST(tst_window_faults);
#include "tst_window_faults.moc"
