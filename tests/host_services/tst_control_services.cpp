#include "support/ErrorOf.h"
#include "support/TestProgram.h"

#include "host/services/ServiceClasses.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/automation/Error.h"
#include "platform/automation/Invoke.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>

#include <functional>

using namespace Qt::StringLiterals;

using automation::Call;
using support::ErrorOf;

namespace {

struct Change {
  std::function<QWidget*()> make;
  std::function<void(QWidget*)> change;
  std::function<void(QWidget*)> undo;
  bool counts = true;
};

template <typename Control>
Change ChangeOf(std::function<void(Control*)> prepare, std::function<void(Control*)> change,
                std::function<void(Control*)> undo, bool counts = true) {
  return {[prepare] {
            auto* control = new Control;
            prepare(control);
            return control;
          },
          [change](QWidget* widget) { change(qobject_cast<Control*>(widget)); },
          [undo](QWidget* widget) { undo(qobject_cast<Control*>(widget)); }, counts};
}

}  // namespace

Q_DECLARE_METATYPE(Change)

class tst_control_services : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void cleanup();

  void ControlsAreDisabled();
  void WholeTextIsSelected();
  void RowIsSelected();
  void WrongObjects();
  void Changes_data();
  void Changes();
  void ChangesInALongTable();
  void ControlsWithoutMemoryAreUnchanged();
  void PartsOfControlsAreNotLookedAt();
  void WidthsComeBack_data();
  void WidthsComeBack();
  void OnlyWidthsOfTheUserAreKept();
  void HostileWidthsAreIgnored_data();
  void HostileWidthsAreIgnored();

 private:
  QTemporaryDir m_folder;
  host::Session m_session;
  std::unique_ptr<QObject> m_api;
};

void tst_control_services::init() {
  m_session = {};
  m_session.title = u"Benefactores"_s;
  m_session.settingsFile = m_folder.filePath(u"settings.ini"_s);
  host::RegisterClasses(m_session);
  m_api = automation::CreateObject(u"kelapi.CPRINCIPAL"_s);
}

void tst_control_services::cleanup() {
  m_api.reset();
  host::UnregisterClasses();
  QFile::remove(m_session.settingsFile);
}

void tst_control_services::ControlsAreDisabled() {
  QPushButton button;
  QAction action;
  Call(m_api.get(), "BloquearControles", &button);
  Call(m_api.get(), "BloquearControles", &action);
  QVERIFY(!button.isEnabled());
  QVERIFY(!action.isEnabled());
}

void tst_control_services::WholeTextIsSelected() {
  QLineEdit line(u"uno"_s);
  QTextEdit text(u"dos"_s);
  QPlainTextEdit plain(u"tres"_s);
  QComboBox combo;
  combo.setEditable(true);
  combo.setEditText(u"cuatro"_s);
  for (QWidget* control : std::initializer_list<QWidget*>{&line, &text, &plain, &combo}) {
    Call(m_api.get(), "SeleccionarTexto", control);
  }
  QCOMPARE(line.selectedText(), u"uno"_s);
  QCOMPARE(text.textCursor().selectedText(), u"dos"_s);
  QCOMPARE(plain.textCursor().selectedText(), u"tres"_s);
  QCOMPARE(combo.lineEdit()->selectedText(), u"cuatro"_s);
}

void tst_control_services::RowIsSelected() {
  QStandardItemModel model(3, 4);
  QTableView view;
  view.setModel(&model);
  Call(m_api.get(), "SeleccionarFila", &view, 2);
  QCOMPARE(view.currentIndex().row(), 2);
  QCOMPARE(view.selectionModel()->selectedRows().size(), 1);
  QVERIFY(view.selectionModel()->isRowSelected(2));
  Call(m_api.get(), "SeleccionarFila", &view, -1);
  QVERIFY(!view.selectionModel()->hasSelection());
  QCOMPARE(ErrorOf([&] { Call(m_api.get(), "SeleccionarFila", &view, 3); }), int(automation::SubscriptOutOfRange));
}

void tst_control_services::WrongObjects() {
  QObject* nothing = nullptr;
  QObject plain;
  QLabel label;
  QCOMPARE(ErrorOf([&] { Call(m_api.get(), "BloquearControles", nothing); }), int(automation::ObjectNotSet));
  QCOMPARE(ErrorOf([&] { Call(m_api.get(), "BloquearControles", &plain); }), int(automation::TypeMismatch));
  QCOMPARE(ErrorOf([&] { Call(m_api.get(), "SeleccionarTexto", &label); }), int(automation::TypeMismatch));
  QCOMPARE(ErrorOf([&] { Call(m_api.get(), "SeleccionarFila", &label, 0); }), int(automation::TypeMismatch));
  QCOMPARE(ErrorOf([&] { Call(m_api.get(), "CargarAnchos", &label, QString(), QString()); }),
           int(automation::TypeMismatch));
  QCOMPARE(ErrorOf([&] { Call(m_api.get(), "SeleccionarTexto", 5); }), int(automation::TypeMismatch));
}

void tst_control_services::Changes_data() {
  QTest::addColumn<Change>("change");
  QTest::newRow("line edit") << ChangeOf<QLineEdit>(
      [](auto* c) { c->setText(u"a"_s); }, [](auto* c) { c->setText(u"b"_s); }, [](auto* c) { c->setText(u"a"_s); });
  QTest::newRow("rich text, only its format") << ChangeOf<QTextEdit>([](auto* c) { c->setPlainText(u"carta"_s); },
                                                                     [](auto* c) {
                                                                       c->selectAll();
                                                                       c->setFontItalic(true);
                                                                     },
                                                                     [](auto* c) { c->setFontItalic(false); });
  QTest::newRow("plain text") << ChangeOf<QPlainTextEdit>([](auto*) {}, [](auto* c) { c->setPlainText(u"x"_s); },
                                                          [](auto* c) { c->clear(); });
  const auto twoItems = [](QComboBox* c) {
    c->addItem(u"Madrid"_s, 28);
    c->addItem(u"Soria"_s, 42);
  };
  QTest::newRow("combo") << ChangeOf<QComboBox>(
      twoItems, [](auto* c) { c->setCurrentIndex(1); }, [](auto* c) { c->setCurrentIndex(0); });
  QTest::newRow("combo, selection dropped") << ChangeOf<QComboBox>(
      twoItems, [](auto* c) { c->setCurrentIndex(-1); }, [](auto* c) { c->setCurrentIndex(0); });
  QTest::newRow("combo, edited text") << ChangeOf<QComboBox>(
      [twoItems](auto* c) {
        twoItems(c);
        c->setEditable(true);
      },
      [](auto* c) { c->setEditText(u"Madri"_s); }, [](auto* c) { c->setEditText(u"Madrid"_s); });
  QTest::newRow("combo, refilled in another order") << ChangeOf<QComboBox>(
      twoItems, [](auto* c) { c->insertItem(0, u"Albacete"_s, 2); }, [](auto* c) { c->removeItem(0); }, false);
  QTest::newRow("check box") << ChangeOf<QCheckBox>([](auto* c) { c->setTristate(true); },
                                                    [](auto* c) { c->setCheckState(Qt::PartiallyChecked); },
                                                    [](auto* c) { c->setCheckState(Qt::Unchecked); });
  QTest::newRow("option") << ChangeOf<QRadioButton>([](auto* c) { c->setAutoExclusive(false); },
                                                    [](auto* c) { c->setChecked(true); },
                                                    [](auto* c) { c->setChecked(false); });
  QTest::newRow("spin box") << ChangeOf<QSpinBox>([](auto*) {}, [](auto* c) { c->setValue(3); },
                                                  [](auto* c) { c->setValue(0); });
  QTest::newRow("date") << ChangeOf<QDateEdit>([](auto* c) { c->setDate(QDate(2024, 1, 1)); },
                                               [](auto* c) { c->setDate(QDate(2024, 1, 2)); },
                                               [](auto* c) { c->setDate(QDate(2024, 1, 1)); });
  QTest::newRow("checkable frame") << ChangeOf<QGroupBox>([](auto* c) { c->setCheckable(true); },
                                                          [](auto* c) { c->setChecked(false); },
                                                          [](auto* c) { c->setChecked(true); });
  QTest::newRow("label") << ChangeOf<QLabel>([](auto*) {}, [](auto* c) { c->setText(u"x"_s); },
                                             [](auto* c) { c->clear(); }, false);
  QTest::newRow("pressed tool") << ChangeOf<QPushButton>([](auto* c) { c->setCheckable(true); },
                                                         [](auto* c) { c->setChecked(true); },
                                                         [](auto* c) { c->setChecked(false); }, false);
}

void tst_control_services::Changes() {
  QFETCH(Change, change);
  const std::unique_ptr<QWidget> control(change.make());
  const QObjectList controls{control.get()};
  Call(m_api.get(), "establecercontrolcambioformulario", controls);
  QVERIFY(!Call(m_api.get(), "controlcambioformulario", controls).toBool());
  change.change(control.get());
  QCOMPARE(Call(m_api.get(), "controlcambioformulario", controls).toBool(), change.counts);
  change.undo(control.get());
  QVERIFY(!Call(m_api.get(), "controlcambioformulario", controls).toBool());
}

void tst_control_services::ChangesInALongTable() {
  QStandardItemModel model(10000, 3);
  for (int row = 0; row < model.rowCount(); ++row) {
    model.setItem(row, 0, new QStandardItem(QString::number(row)));
  }
  QTableView view;
  view.setModel(&model);
  const QObjectList controls{&view};
  Call(m_api.get(), "establecercontrolcambioformulario", controls);
  const auto changed = [&] { return Call(m_api.get(), "controlcambioformulario", controls).toBool(); };
  view.selectRow(5000);
  QVERIFY(!changed());
  model.item(9999, 0)->setText(u"otra"_s);
  QVERIFY(changed());
  model.item(9999, 0)->setText(u"9999"_s);
  QVERIFY(!changed());
  model.removeRow(10);
  QVERIFY(changed());
}

void tst_control_services::ControlsWithoutMemoryAreUnchanged() {
  QLineEdit known;
  QLineEdit added(u"x"_s);
  Call(m_api.get(), "establecercontrolcambioformulario", QObjectList{&known, nullptr});
  added.setText(u"y"_s);
  QVERIFY(!Call(m_api.get(), "controlcambioformulario", QObjectList{&known, &added, nullptr}).toBool());
}

void tst_control_services::PartsOfControlsAreNotLookedAt() {
  QWidget dialog;
  auto* combo = new QComboBox(&dialog);
  combo->addItem(u"España"_s, 35);
  combo->view();
  const QObjectList controls = dialog.findChildren<QObject*>();
  QVERIFY(controls.size() > 2);
  Call(m_api.get(), "establecercontrolcambioformulario", controls);
  combo->addItem(u"Francia"_s, 73);
  QVERIFY(!Call(m_api.get(), "controlcambioformulario", controls).toBool());
}

void tst_control_services::WidthsComeBack_data() {
  QTest::addColumn<QString>("key");
  QTest::newRow("title and path") << u"Benefactores\\Raíz\\Bancos"_s;
  QTest::newRow("slashes") << u"/a//b/../c"_s;
  QTest::newRow("ini marks") << u"[x]=y;%1 \"z\" 50%"_s;
  QTest::newRow("empty") << QString();
  QTest::newRow("line break") << u"a\nb\0c"_s;
}

void tst_control_services::WidthsComeBack() {
  QFETCH(QString, key);
  QStandardItemModel model(1, 3);
  QTableView saved;
  saved.setModel(&model);
  saved.setColumnWidth(0, 61);
  saved.setColumnWidth(1, 152);
  saved.setColumnHidden(2, true);
  Call(m_api.get(), "SalvarAnchos", &saved, key, u"frmBanco"_s);
  QTableView loaded;
  loaded.setModel(&model);
  Call(m_api.get(), "CargarAnchos", &loaded, key, u"frmBanco"_s);
  QCOMPARE(loaded.columnWidth(0), 61);
  QCOMPARE(loaded.columnWidth(1), 152);
  QCOMPARE(loaded.columnWidth(2), QTableView().horizontalHeader()->defaultSectionSize());

  QTableView hidden;
  hidden.setModel(&model);
  hidden.setColumnHidden(0, true);
  Call(m_api.get(), "CargarAnchos", &hidden, key, u"frmBanco"_s);
  hidden.setColumnHidden(0, false);
  QVERIFY(hidden.columnWidth(0) != 61);

  QTableView other;
  other.setModel(&model);
  Call(m_api.get(), "CargarAnchos", &other, key, u"frmOtro"_s);
  QVERIFY(other.columnWidth(0) != 61);
}

void tst_control_services::OnlyWidthsOfTheUserAreKept() {
  QStandardItemModel model(1, 2);
  const auto stored = [this] { return QSettings(m_session.settingsFile, QSettings::IniFormat).allKeys().size(); };
  QTableView grid;
  grid.setModel(&model);
  grid.horizontalHeader()->setStretchLastSection(true);
  grid.resize(300, 100);
  grid.show();
  Call(m_api.get(), "CargarAnchos", &grid, u"k"_s, u"f"_s);
  grid.resize(400, 100);
  Call(m_api.get(), "SalvarAnchos", &grid, u"k"_s, u"f"_s);
  QCOMPARE(stored(), 0);
  grid.setColumnWidth(0, 61);
  Call(m_api.get(), "SalvarAnchos", &grid, u"k"_s, u"f"_s);
  QCOMPARE(stored(), 1);
}

void tst_control_services::HostileWidthsAreIgnored_data() {
  QTest::addColumn<QVariant>("stored");
  QTest::newRow("negative") << QVariant(QStringList{u"-5"_s});
  QTest::newRow("huge") << QVariant(QStringList{u"99999999999999999999"_s});
  QTest::newRow("text") << QVariant(u"ancho"_s);
  QTest::newRow("another type") << QVariant(QSize(3, 4));
  QTest::newRow("more columns than the grid") << QVariant(QStringList(1000, u"x"_s));
}

void tst_control_services::HostileWidthsAreIgnored() {
  QFETCH(QVariant, stored);
  QStandardItemModel model(1, 1);
  QTableView grid;
  grid.setModel(&model);
  Call(m_api.get(), "SalvarAnchos", &grid, u"k"_s, u"f"_s);
  {
    QSettings settings(m_session.settingsFile, QSettings::IniFormat);
    QCOMPARE(settings.allKeys().size(), 1);
    settings.setValue(settings.allKeys().constFirst(), stored);
  }
  const int width = grid.columnWidth(0);
  Call(m_api.get(), "CargarAnchos", &grid, u"k"_s, u"f"_s);
  QCOMPARE(grid.columnWidth(0), width);
}

KEL_TEST(tst_control_services);
#include "tst_control_services.moc"
