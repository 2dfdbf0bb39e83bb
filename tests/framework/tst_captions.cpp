#include "framework/CargarTextosFormulario.h"
#include "support/TestProgram.h"

#include <QAction>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QToolBar>
#include <QTreeWidget>

using namespace framework;
using namespace Qt::StringLiterals;

namespace {

template <typename Control>
Control* Add(QDialog& dialog, const char* tag, const char* text = "", const char* toolTip = "") {
  auto* control = new Control(&dialog);
  control->setProperty("Tag", QString::fromLatin1(tag));
  if constexpr (requires { control->setText(QString()); }) {
    control->setText(QString::fromUtf8(text));
  }
  control->setToolTip(QString::fromLatin1(toolTip));
  return control;
}

}  // namespace

class tst_captions : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void LabelsAndButtons_data() {
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("button");
    const QString before = u"antes"_s;
    QTest::newRow("number") << "12001"
                            << "(*) País:"
                            << "(*) País:";
    QTest::newRow("missing id") << "12999" << before << before;
    QTest::newRow("zero") << "0" << before << before;
    QTest::newRow("empty") << "" << before << before;
    QTest::newRow("text") << "lblPais" << before << before;
    QTest::newRow("leading digits count for other controls only") << "1007x" << before << "&Aceptar";
    QTest::newRow("beyond 16 bits") << "77001" << before << before;
    QTest::newRow("negative") << "-5" << before << before;
    QTest::newRow("enormous") << QString(500, u'9') << before << before;
  }
  void LabelsAndButtons() {
    QFETCH(QString, tag);
    QDialog dialog;
    auto* label = Add<QLabel>(dialog, tag.toLatin1(), "antes");
    auto* button = Add<QPushButton>(dialog, tag.toLatin1(), "antes");
    CargarTextosFormulario(&dialog);
    QTEST(label->text(), "label");
    QTEST(button->text(), "button");
  }

  void EveryKindOfControl() {
    QDialog dialog;
    dialog.setProperty("Tag", u"12002"_s);
    auto* textBox = Add<QLineEdit>(dialog, "12001", "contenido", "1007");
    auto* label = Add<QLabel>(dialog, "12001", "", "1007");
    auto* group = Add<QGroupBox>(dialog, "16002");
    auto* menu = new QMenu(u"3003"_s, &dialog);
    QAction* item = menu->addAction(u"3004"_s);
    QAction* separator = menu->addAction(u"-"_s);
    auto* tabs = new QTabWidget(&dialog);
    auto* page = new QWidget;
    page->setProperty("Tag", u"10009"_s);
    tabs->addTab(page, u"x"_s);
    tabs->addTab(new QWidget, u"y"_s);
    auto* list = new QTreeWidget(&dialog);
    list->setHeaderLabels({u"a"_s, u"b"_s});
    list->headerItem()->setData(0, Qt::UserRole, u"1106"_s);
    auto* toolBar = new QToolBar(&dialog);
    toolBar->setProperty("Tag", u"1007"_s);
    QAction* tool = toolBar->addAction(u"1007"_s);
    tool->setToolTip(u"1008"_s);

    CargarTextosFormulario(&dialog);
    QCOMPARE(dialog.windowTitle(), u"Países"_s);
    QCOMPARE(textBox->text(), u"contenido"_s);
    QCOMPARE(textBox->toolTip(), u"&Aceptar"_s);
    // Only the tool tips of other controls are localised.
    QCOMPARE(label->toolTip(), u"1007"_s);
    QCOMPARE(group->title(), u"Entidad bancaria:"_s);
    QCOMPARE(menu->title(), u"&Archivo"_s);
    QCOMPARE(item->text(), u"&Guardar"_s);
    QCOMPARE(separator->text(), u"-"_s);
    QCOMPARE(tabs->tabText(0), u"Medidas: "_s);
    QCOMPARE(tabs->tabText(1), u"y"_s);
    QCOMPARE(list->headerItem()->text(0), u"Código"_s);
    QCOMPARE(list->headerItem()->text(1), u"b"_s);
    QCOMPARE(tool->text(), u"1007"_s);
    QCOMPARE(tool->toolTip(), u"1008"_s);
  }
};

KEL_TEST(tst_captions);
#include "tst_captions.moc"
