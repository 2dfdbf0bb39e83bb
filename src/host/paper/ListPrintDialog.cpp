#include "host/paper/ListPrintDialog.h"

#include "host/look/PlainLabel.h"
#include "host/mailing/output/Outputs.h"
#include "host/mailing/printing/Printing.h"
#include "host/mailing/window/MailingOutput.h"
#include "host/paper/ListFile.h"
#include "host/services/ErrorBox.h"
#include "paper/PageBar.h"
#include "paper/PageView.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QSpinBox>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int mostCopies = 99;
constexpr QSize usualSize(1060, 700);

}  // namespace

ListPrintDialog::ListPrintDialog(ListTable shown, ListTable selected, const QString& connectionString, QWidget* parent)
    : QDialog(parent),
      m_shown(std::move(shown)),
      m_selected(std::move(selected)),
      m_connectionString(connectionString) {
  m_choices = Choices();
  setObjectName(u"dlgImprimirLista"_s);
  setWindowTitle(u"Imprimir «%1»"_s.arg(m_shown.title));
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  m_state = NamedLabel(u"lblEstado"_s, this);
  m_progress = new QProgressBar(this);
  m_progress->setAccessibleName(u"Lo que va escrito"_s);
  auto* scroll = new QScrollArea(this);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setFocusPolicy(Qt::NoFocus);
  scroll->setWidget(m_choices);
  scroll->setMinimumWidth(m_choices->minimumSizeHint().width() +
                          scroll->style()->pixelMetric(QStyle::PM_ScrollBarExtent));
  auto* left = new QVBoxLayout;
  left->addWidget(scroll, 1);
  left->addWidget(m_state);
  left->addWidget(m_progress);
  left->addWidget(Buttons());
  auto* layout = new QHBoxLayout(this);
  layout->addLayout(left);
  layout->addWidget(Preview(), 1);
  connect(&m_run, &MailingRun::Progressed, this, [this](int done, int parts) {
    m_progress->setRange(0, parts);
    m_progress->setValue(done);
  });
  connect(&m_run, &MailingRun::Finished, this, &ListPrintDialog::End);
  connect(&m_run, &MailingRun::Failed, this, [this](const automation::Error& error) {
    ShowRunning(false);
    ShowError(this, windowTitle(), u"La lista no se ha impreso."_s, error);
  });
  m_landscape->setChecked(ListPages::Proposed(m_shown) == ListPages::Orientation::Landscape);
  ShowPages();
  ShowRunning(false);
  FindPrinters();
  resize(usualSize);
}

ListPrintDialog::~ListPrintDialog() = default;

QWidget* ListPrintDialog::Choices() {
  auto* choices = new QWidget(this);
  auto* layout = new QVBoxLayout(choices);
  layout->setContentsMargins({});
  auto* form = new QFormLayout;
  AddPrinter(*form);
  layout->addLayout(form);
  AddSheets(*layout);
  AddWhat(*layout);
  layout->addWidget(m_fit);
  layout->addStretch(1);
  return choices;
}

void ListPrintDialog::AddPrinter(QFormLayout& form) {
  m_printer = new PrinterChoice(form, *this);
  m_first = new QSpinBox(this);
  m_first->setObjectName(u"numPaginaPrimera"_s);
  m_last = new QSpinBox(this);
  m_last->setObjectName(u"numPaginaUltima"_s);
  m_copies = new QSpinBox(this);
  m_copies->setObjectName(u"numEjemplares"_s);
  m_copies->setRange(1, mostCopies);
  form.addRow(u"&Desde la página:"_s, m_first);
  form.addRow(u"&Hasta la página:"_s, m_last);
  form.addRow(u"E&jemplares:"_s, m_copies);
  connect(m_printer, &PrinterChoice::Changed, this, &ListPrintDialog::UpdateButtons);
  connect(m_first, &QSpinBox::valueChanged, m_last, [this](int first) { m_last->setMinimum(first); });
}

void ListPrintDialog::AddSheets(QVBoxLayout& layout) {
  auto* sheets = new QGroupBox(u"Hojas A4"_s, this);
  auto* row = new QHBoxLayout(sheets);
  auto* upright = new QRadioButton(u"&Vertical"_s, sheets);
  upright->setObjectName(u"optVertical"_s);
  upright->setChecked(true);
  m_landscape = new QRadioButton(u"&Apaisada"_s, sheets);
  m_landscape->setObjectName(u"optApaisada"_s);
  row->addWidget(upright);
  row->addWidget(m_landscape);
  layout.addWidget(sheets);
  connect(m_landscape, &QRadioButton::toggled, this, &ListPrintDialog::ShowPages);
}

void ListPrintDialog::AddWhat(QVBoxLayout& layout) {
  auto* what = new QGroupBox(u"Qué"_s, this);
  auto* rows = new QVBoxLayout(what);
  auto* all = new QRadioButton(u"&Lo que se ve (%1)"_s.arg(m_shown.RowCount()), what);
  all->setObjectName(u"optTodos"_s);
  all->setChecked(true);
  m_some = new QRadioButton(u"Los &seleccionados (%1)"_s.arg(m_selected.RowCount()), what);
  m_some->setObjectName(u"optSeleccionados"_s);
  m_some->setEnabled(m_selected.RowCount() > 0);
  rows->addWidget(all);
  rows->addWidget(m_some);
  layout.addWidget(what);
  auto* label = new QLabel(u"C&olumnas:"_s, this);
  m_columns = new QListWidget(this);
  m_columns->setObjectName(u"lstColumnas"_s);
  label->setBuddy(m_columns);
  for (int column = 0; column < m_shown.ColumnCount(); ++column) {
    auto* item = new QListWidgetItem(m_shown.Heading(column), m_columns);
    item->setCheckState(Qt::Checked);
  }
  constexpr int mostShown = 6;
  m_columns->setMaximumHeight(m_columns->sizeHintForRow(0) * std::min(mostShown, m_columns->count()) +
                              m_columns->fontMetrics().height());
  m_fit = NamedLabel(u"lblCaben"_s, this);
  layout.addWidget(label);
  layout.addWidget(m_columns);
  connect(m_some, &QRadioButton::toggled, this, &ListPrintDialog::ShowPages);
  connect(m_columns, &QListWidget::itemChanged, this, &ListPrintDialog::ShowPages);
}

QDialogButtonBox* ListPrintDialog::Buttons() {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  buttons->button(QDialogButtonBox::Close)->setText(u"&Cerrar"_s);
  m_print = buttons->addButton(u"&Imprimir"_s, QDialogButtonBox::ActionRole);
  m_print->setObjectName(u"cmdImprimir"_s);
  m_print->setDefault(true);
  m_pdf = buttons->addButton(u"&Guardar PDF…"_s, QDialogButtonBox::ActionRole);
  m_pdf->setObjectName(u"cmdPdf"_s);
  connect(m_print, &QPushButton::clicked, this, &ListPrintDialog::Print);
  connect(m_pdf, &QPushButton::clicked, this, &ListPrintDialog::SaveAsPdf);
  connect(buttons, &QDialogButtonBox::rejected, this, &ListPrintDialog::reject);
  return buttons;
}

QWidget* ListPrintDialog::Preview() {
  auto* preview = new QWidget(this);
  auto* layout = new QVBoxLayout(preview);
  layout->setContentsMargins({});
  layout->setSpacing(0);
  m_view = new paper::PageView(preview);
  m_view->setObjectName(u"pagVista"_s);
  m_view->setAccessibleName(u"Vista previa"_s);
  auto* bar = new paper::PageBar(preview);
  bar->AddLeafing(*m_view, {});
  layout->addWidget(m_view, 1);
  layout->addWidget(bar);
  return preview;
}

// Beside the window's work: a print server may be slow.
void ListPrintDialog::FindPrinters() {
  const auto found = std::make_shared<QList<KnownPrinter>>();
  connect(&m_search, &MailingRun::Finished, this, [this, found] { m_printer->Show(*found); });
  m_search.Start([found](RunControl& /*control*/) {
    *found = KnownPrinters();
    return RunResult();
  });
}

ListTable ListPrintDialog::Chosen() const {
  ListTable table = m_some->isChecked() ? m_selected : m_shown;
  table.columns.clear();
  for (int column = 0; column < m_columns->count(); ++column) {
    if (m_columns->item(column)->checkState() == Qt::Checked) {
      table.columns.append(m_shown.columns[column]);
    }
  }
  return table;
}

// The view gets the new pages before the old ones go.
void ListPrintDialog::ShowPages() {
  const auto pages = std::make_shared<const ListPages>(
      Chosen(), m_landscape->isChecked() ? ListPages::Orientation::Landscape : ListPages::Orientation::Upright);
  m_view->SetPages(*pages);
  m_pages = pages;
  m_first->setRange(1, pages->Count());
  m_first->setValue(1);
  m_last->setRange(1, pages->Count());
  m_last->setValue(pages->Count());
  m_fit->setText(FitText());
  UpdateButtons();
}

QString ListPrintDialog::FitText() const {
  if (!m_pages->HasColumns()) {
    return u"Marque alguna columna."_s;
  }
  if (!m_pages->LeftOut().isEmpty()) {
    return u"No caben y no se imprimen: %1. Desmarque otras columnas%2."_s.arg(
        m_pages->LeftOut().join(u", "_s), m_landscape->isChecked() ? QString() : u" o elija hojas apaisadas"_s);
  }
  return m_pages->IsNarrowed() ? u"Caben todas las columnas; los textos largos ocupan varias líneas."_s
                               : u"Caben todas las columnas."_s;
}

void ListPrintDialog::Print() {
  PrintWish wish;
  wish.queue = m_printer->Queue();
  wish.tray = m_printer->Tray();
  wish.copies = m_copies->value();
  wish.pages = {m_first->value(), m_last->value()};
  Start([pages = m_pages, wish, connectionString = m_connectionString](RunControl& control) {
    return PrintCalibrated(*pages, connectionString, wish, control);
  });
}

void ListPrintDialog::SaveAsPdf() {
  const QString path = AskForListFile(*this, m_shown.title, ListFileKinds().last());
  if (path.isEmpty()) {
    return;
  }
  Start([pages = m_pages, path](RunControl& control) {
    RunResult result;
    result.isWhole = WritePdf(*pages, path, control);
    result.text =
        result.isWhole ? u"Guardado en «%1»."_s.arg(path) : u"Interrumpido: no se ha dejado ningún archivo."_s;
    return result;
  });
}

void ListPrintDialog::Start(const MailingRun::Work& work) {
  m_run.Start(work);
  ShowRunning(true);
}

void ListPrintDialog::End(const RunResult& result) {
  ShowRunning(false);
  m_news = result.text;
  m_state->setText(result.text);
}

// Ends what runs first; the dialog stays then.
void ListPrintDialog::reject() {
  if (m_run.IsRunning()) {
    m_run.Cancel();
  } else {
    QDialog::reject();
  }
}

void ListPrintDialog::ShowRunning(bool isRunning) {
  m_choices->setEnabled(!isRunning);
  m_progress->setVisible(isRunning);
  m_state->setText(isRunning ? u"Escribiendo…"_s : QString());
  UpdateButtons();
}

void ListPrintDialog::UpdateButtons() {
  const bool mayWrite = !m_run.IsRunning() && m_pages && m_pages->HasColumns();
  if (m_print != nullptr) {
    m_print->setEnabled(mayWrite && m_printer->CanPrint());
    m_pdf->setEnabled(mayWrite);
  }
}

}  // namespace host
