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
    const QString before = QStringLiteral("antes");
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
    dialog.setProperty("Tag", QStringLiteral("12002"));
    auto* textBox = Add<QLineEdit>(dialog, "12001", "contenido", "1007");
    auto* label = Add<QLabel>(dialog, "12001", "", "1007");
    auto* group = Add<QGroupBox>(dialog, "16002");
    auto* menu = new QMenu(QStringLiteral("3003"), &dialog);
    QAction* item = menu->addAction(QStringLiteral("3004"));
    QAction* separator = menu->addAction(QStringLiteral("-"));
    auto* tabs = new QTabWidget(&dialog);
    auto* page = new QWidget;
    page->setProperty("Tag", QStringLiteral("10009"));
    tabs->addTab(page, QStringLiteral("x"));
    tabs->addTab(new QWidget, QStringLiteral("y"));
    auto* list = new QTreeWidget(&dialog);
    list->setHeaderLabels({QStringLiteral("a"), QStringLiteral("b")});
    list->headerItem()->setData(0, Qt::UserRole, QStringLiteral("1106"));
    auto* toolBar = new QToolBar(&dialog);
    toolBar->setProperty("Tag", QStringLiteral("1007"));
    QAction* tool = toolBar->addAction(QStringLiteral("1007"));
    tool->setToolTip(QStringLiteral("1008"));

    CargarTextosFormulario(&dialog);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Países"));
    QCOMPARE(textBox->text(), QStringLiteral("contenido"));
    QCOMPARE(textBox->toolTip(), QStringLiteral("&Aceptar"));
    // Only the tool tips of other controls are localised.
    QCOMPARE(label->toolTip(), QStringLiteral("1007"));
    QCOMPARE(group->title(), QStringLiteral("Entidad bancaria:"));
    QCOMPARE(menu->title(), QStringLiteral("&Archivo"));
    QCOMPARE(item->text(), QStringLiteral("&Guardar"));
    QCOMPARE(separator->text(), QStringLiteral("-"));
    QCOMPARE(tabs->tabText(0), QStringLiteral("Medidas: "));
    QCOMPARE(tabs->tabText(1), QStringLiteral("y"));
    QCOMPARE(list->headerItem()->text(0), QStringLiteral("Código"));
    QCOMPARE(list->headerItem()->text(1), QStringLiteral("b"));
    QCOMPARE(tool->text(), QStringLiteral("1007"));
    QCOMPARE(tool->toolTip(), QStringLiteral("1008"));
  }
};

KEL_TEST(tst_captions);
#include "tst_captions.moc"
