#include "host/calibration/CalibrationDialog.h"

#include "host/calibration/CalibrationPicture.h"
#include "host/look/PlainLabel.h"
#include "host/look/ScrolledColumn.h"
#include "host/mailing/printing/CalibrationPage.h"
#include "host/services/PlainBox.h"
#include "platform/automation/Error.h"

#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

using documents::Calibration;

namespace host {

namespace {

QLabel* Heading(const QString& text, QWidget* parent) {
  QLabel* label = PlainLabel(text, parent);
  QFont font = label->font();
  font.setBold(true);
  font.setPointSize(font.pointSize() + 1);
  label->setFont(font);
  return label;
}

QString Number(double value, int decimals) {
  return QString::number(value, 'f', decimals).replace(u'.', u',').replace(u'-', u'\u2212');
}

QString Move(double millimetres, const QString& back, const QString& forth) {
  constexpr double nothing = 0.05;
  const QString number = (millimetres > 0 ? u"+"_s : QString()) + Number(millimetres, 1);
  return std::abs(millimetres) < nothing ? u"0,0 mm"_s : u"%1 mm (%2)"_s.arg(number, millimetres < 0 ? back : forth);
}

QString Percent(double scale) {
  return u"%1 %"_s.arg(Number(100 / scale, 2));
}

}  // namespace

CalibrationDialog::CalibrationDialog(adodb::Connection& connection, const QString& user, const QString& printer,
                                     Printers printers, QWidget* parent)
    : QDialog(parent), m_connection(connection), m_user(user), m_printers(std::move(printers)) {
  setObjectName(u"calibrationDialog"_s);
  setWindowTitle(u"Calibrar impresora"_s);
  m_picture = new CalibrationPicture(this);
  auto* content = new QWidget(this);
  auto* steps = new QVBoxLayout(content);
  steps->setContentsMargins({});
  steps->addWidget(PlainLabel(
      u"Casi todas las impresoras mueven la hoja un milímetro o más y encogen un poco lo que imprimen. Se mide una "
      "vez por impresora y bandeja; las etiquetas y las cartas lo tienen en cuenta desde entonces. Los PDF no "
      "cambian."_s,
      this));
  BuildPrinter(*steps);
  BuildMeasures(*steps);
  BuildResult(*steps);
  steps->addStretch();
  // Large texts have no room on a small screen.
  auto* left = new QVBoxLayout;
  m_steps = new ScrolledColumn(content, this);
  left->addWidget(m_steps);
  BuildButtons(*left);
  auto* both = new QHBoxLayout(this);
  both->addLayout(left, 1);
  both->addWidget(m_picture, 1);
  for (const PrintQueue& queue : m_printers.queues()) {
    m_printer->addItem(queue.title, queue.name);
    if (queue.name == printer || (queue.isUsual && m_printer->findData(printer) < 0)) {
      m_printer->setCurrentIndex(m_printer->count() - 1);
    }
  }
  ShowPrinter();
  connect(m_printer, &QComboBox::currentIndexChanged, this, &CalibrationDialog::ShowPrinter);
  connect(m_tray, &QComboBox::currentIndexChanged, this, &CalibrationDialog::ShowTray);
}

void CalibrationDialog::BuildPrinter(QBoxLayout& layout) {
  m_printer = new QComboBox(this);
  m_printer->setObjectName(u"calibratedPrinter"_s);
  m_tray = new QComboBox(this);
  m_tray->setObjectName(u"calibratedTray"_s);
  m_state = PlainLabel({}, this);
  m_state->setObjectName(u"calibrationState"_s);
  layout.addWidget(Heading(u"1 · Impresora"_s, this));
  auto* form = new QFormLayout;
  form->addRow(u"&Impresora:"_s, m_printer);
  form->addRow(u"Ba&ndeja:"_s, m_tray);
  layout.addLayout(form);
  layout.addWidget(m_state);
  layout.addWidget(Heading(u"2 · Imprimir la página de prueba"_s, this));
  m_print = new QPushButton(u"Imprimir &página de prueba"_s, this);
  m_print->setObjectName(u"printCalibration"_s);
  m_print->setAutoDefault(false);
  auto* row = new QHBoxLayout;
  row->addWidget(m_print);
  row->addWidget(PlainLabel(u"en papel corriente, no en etiquetas"_s, this), 1);
  layout.addLayout(row);
  connect(m_print, &QPushButton::clicked, this, [this] { PrintPage({}); });
}

void CalibrationDialog::BuildMeasures(QBoxLayout& layout) {
  layout.addWidget(Heading(u"3 · Medir con una regla (mm)"_s, this));
  const std::pair<QString, double> rows[measureCount] = {
      {u"&A  del borde izquierdo a la línea vertical"_s, documents::firstCross.x()},
      {u"&B  del borde superior a la línea horizontal"_s, documents::firstCross.y()},
      {u"&C  entre las cruces, a lo ancho"_s, documents::crossDistance.x()},
      {u"&D  entre las cruces, a lo alto"_s, documents::crossDistance.y()},
  };
  auto* grid = new QGridLayout;
  for (int i = 0; i < measureCount; ++i) {
    auto* box = new QLineEdit(this);
    constexpr int longest = 10;
    box->setObjectName(u"measure_%1"_s.arg(i));
    box->setMaxLength(longest);
    box->setAlignment(Qt::AlignRight);
    box->setFixedWidth(fontMetrics().averageCharWidth() * longest);
    box->installEventFilter(this);
    auto* name = new QLabel(rows[i].first, this);
    name->setBuddy(box);
    grid->addWidget(name, i, 0);
    grid->addWidget(box, i, 1);
    grid->addWidget(PlainLabel(u"debe ser %1"_s.arg(Number(rows[i].second, 1)), this), i, 2);
    connect(box, &QLineEdit::textChanged, this, &CalibrationDialog::ShowResult);
    m_measures[static_cast<std::size_t>(i)] = box;
  }
  layout.addLayout(grid);
  layout.addWidget(
      PlainLabel(u"La flecha roja es la medida que se está escribiendo. Se aceptan coma y punto."_s, this));
}

void CalibrationDialog::BuildResult(QBoxLayout& layout) {
  layout.addWidget(Heading(u"Resultado"_s, this));
  auto* form = new QFormLayout;
  const QString names[measureCount] = {u"Mover a lo ancho"_s, u"Mover a lo alto"_s, u"Escala a lo ancho"_s,
                                       u"Escala a lo alto"_s};
  for (int i = 0; i < measureCount; ++i) {
    QLabel*& result = m_results[static_cast<std::size_t>(i)];
    result = PlainLabel({}, this);
    result->setObjectName(u"calibrationResult_%1"_s.arg(i));
    form->addRow(names[i], result);
  }
  layout.addLayout(form);
  m_verdict = PlainLabel({}, this);
  m_verdict->setObjectName(u"calibrationVerdict"_s);
  m_verdict->setFrameShape(QFrame::StyledPanel);
  m_verdict->setMargin(fontMetrics().height() / 2);
  m_verdict->setMinimumHeight(fontMetrics().lineSpacing() * 4);
  layout.addWidget(m_verdict);
}

void CalibrationDialog::BuildButtons(QBoxLayout& layout) {
  auto* row = new QHBoxLayout;
  const auto add = [&](const QString& text, const QString& name, auto handler) {
    auto* button = new QPushButton(text, this);
    button->setObjectName(name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, handler);
    row->addWidget(button);
    return button;
  };
  m_drop = add(u"&Quitar la calibración"_s, u"dropCalibration"_s, [this] { Drop(); });
  row->addStretch();
  m_printAgain = add(u"Imprimir &otra vez, corregida"_s, u"printCorrected"_s,
                     [this] { PrintPage(m_calibration.value_or(Calibration())); });
  m_keep = add(u"&Guardar"_s, u"keepCalibration"_s, [this] { Keep(); });
  add(u"Cancelar"_s, u"cancelCalibration"_s, [this] { reject(); });
  m_keep->setDefault(true);
  layout.addLayout(row);
}

bool CalibrationDialog::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
    const auto box = std::ranges::find(m_measures, watched);
    const bool isIn = event->type() == QEvent::FocusIn && box != m_measures.end();
    if (isIn) {
      m_steps->ensureWidgetVisible(*box);
    }
    m_picture->SetMarked(isIn ? static_cast<int>(box - m_measures.begin()) : -1);
  }
  return QDialog::eventFilter(watched, event);
}

PrinterTray CalibrationDialog::Place() const {
  return {.printer = m_printer->currentData().toString(), .tray = m_tray->currentData().toString()};
}

void CalibrationDialog::ShowPrinter() {
  const QString printer = Place().printer;
  {
    const QSignalBlocker quiet(m_tray);
    m_tray->clear();
    m_tray->addItem(u"La que elija la impresora"_s, QString());
    for (const PrintTray& tray : printer.isEmpty() ? QList<PrintTray>() : m_printers.trays(printer)) {
      m_tray->addItem(tray.title, tray.word);
    }
  }
  m_picture->SetPrinter(m_printer->currentText());
  ShowTray();
}

void CalibrationDialog::ShowTray() {
  std::optional<KeptCalibration> kept;
  const bool hasPrinter = m_printer->count() > 0;
  try {
    kept = FindCalibration(m_connection, Place());
    m_state->setText(!hasPrinter ? u"No hay ninguna impresora en este equipo."_s
                     : kept      ? u"Calibrada el %1 por «%2» en este equipo."_s.arg(kept->date, kept->user)
                                 : u"Sin calibrar en este equipo."_s);
  } catch (const automation::Error& error) {
    m_state->setText(error.Description());
  }
  for (QWidget* control :
       {static_cast<QWidget*>(m_printer), static_cast<QWidget*>(m_tray), static_cast<QWidget*>(m_print)}) {
    control->setEnabled(hasPrinter);
  }
  m_drop->setEnabled(kept.has_value());
  ShowMeasures(kept);
}

void CalibrationDialog::ShowMeasures(const std::optional<KeptCalibration>& kept) {
  QStringList texts(measureCount);
  if (kept) {
    const Calibration& calibration = kept->calibration;
    texts = {Number(documents::firstCross.x() * calibration.scale.x() + calibration.offset.x(), 2),
             Number(documents::firstCross.y() * calibration.scale.y() + calibration.offset.y(), 2),
             Number(documents::crossDistance.x() * calibration.scale.x(), 2),
             Number(documents::crossDistance.y() * calibration.scale.y(), 2)};
  }
  for (int i = 0; i < measureCount; ++i) {
    m_measures[static_cast<std::size_t>(i)]->setText(texts[i]);
  }
  ShowResult();
}

void CalibrationDialog::ShowResult() {
  QStringList texts;
  for (const QLineEdit* box : m_measures) {
    texts.append(box->text().trimmed());
  }
  const bool isComplete = !texts.contains(QString());
  const documents::CalibrationReading reading =
      isComplete ? documents::ReadCalibration({texts[0], texts[1], texts[2], texts[3]})
                 : documents::CalibrationReading{};
  m_calibration = reading.calibration;
  QStringList results(measureCount);
  if (m_calibration) {
    const QPointF move = -m_calibration->offset;
    results = {Move(move.x(), u"a la izquierda"_s, u"a la derecha"_s),
               Move(move.y(), u"hacia arriba"_s, u"hacia abajo"_s), Percent(m_calibration->scale.x()),
               Percent(m_calibration->scale.y())};
  }
  for (int i = 0; i < measureCount; ++i) {
    m_results[static_cast<std::size_t>(i)]->setText(results[i]);
  }
  m_verdict->setText(!isComplete ? u"Escriba las cuatro medidas de la página impresa."_s
                     : m_calibration
                         ? u"La regla se lee con 0,25 mm: eso es lo que puede quedar de error. Imprima otra "
                           "vez la página, corregida, para comprobarlo: A y B deben dar 20,0."_s
                         : reading.refusal);
  m_keep->setEnabled(m_calibration && m_printer->count() > 0);
  m_printAgain->setEnabled(m_keep->isEnabled());
}

void CalibrationDialog::PrintPage(const Calibration& calibration) {
  const PrinterTray place = Place();
  try {
    m_printers.print(CalibrationPage(m_printer->currentText()), {.queue = place.printer,
                                                                 .tray = place.tray,
                                                                 .bothSides = false,
                                                                 .pages = {},
                                                                 .copies = 1,
                                                                 .calibration = calibration});
    m_verdict->setText(u"La página va a la impresora. Mida en ella las cuatro distancias."_s);
  } catch (const automation::Error& error) {
    m_verdict->setText(error.Description());
  }
}

void CalibrationDialog::Keep() {
  try {
    KeepCalibration(m_connection, Place(), *m_calibration, m_user);
    accept();
  } catch (const automation::Error& error) {
    m_verdict->setText(error.Description());
  }
}

void CalibrationDialog::Drop() {
  PlainBox box(
      QMessageBox::Question, windowTitle(),
      u"¿Desea quitar la calibración de «%1»? Desde entonces se imprime sin corregir."_s.arg(m_printer->currentText()),
      QMessageBox::Yes | QMessageBox::No, this);
  box.setDefaultButton(QMessageBox::No);
  if (box.exec() != QMessageBox::Yes) {
    return;
  }
  try {
    DropCalibration(m_connection, Place());
  } catch (const automation::Error& error) {
    m_verdict->setText(error.Description());
    return;
  }
  ShowTray();
}

}  // namespace host
