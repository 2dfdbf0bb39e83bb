#include "host/paper/ExportDialog.h"

#include "host/paper/ListExport.h"
#include "host/paper/ListFile.h"
#include "host/services/ErrorBox.h"

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString kindKey = u"Exportar/Clase"_s;

}  // namespace

ExportDialog::ExportDialog(ListTable shown, ListTable selected, QWidget* parent)
    : QDialog(parent),
      m_shown(std::move(shown)),
      m_selected(std::move(selected)),
      m_advice(new QLabel(this)),
      m_progress(new QProgressBar(this)) {
  m_choices = Choices();
  setObjectName(u"dlgExportar"_s);
  setWindowTitle(u"Exportar «%1»"_s.arg(m_shown.title));
  m_advice->setObjectName(u"lblConsejo"_s);
  m_advice->setWordWrap(true);
  constexpr int adviceLines = 2;
  m_advice->setMinimumHeight(adviceLines * fontMetrics().lineSpacing());
  m_progress->setAccessibleName(u"Lo que va escrito"_s);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Cancel)->setText(u"&Cancelar"_s);
  m_save = buttons->addButton(u"&Guardar como…"_s, QDialogButtonBox::ActionRole);
  m_save->setObjectName(u"cmdGuardar"_s);
  m_save->setDefault(true);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(m_choices);
  layout->addWidget(m_advice);
  layout->addWidget(m_progress);
  layout->addWidget(buttons);
  connect(m_save, &QPushButton::clicked, this, &ExportDialog::Save);
  connect(buttons, &QDialogButtonBox::rejected, this, &ExportDialog::reject);
  connect(&m_run, &MailingRun::Progressed, this, [this](int done, int parts) {
    m_progress->setRange(0, parts);
    m_progress->setValue(done);
  });
  connect(&m_run, &MailingRun::Finished, this, &ExportDialog::End);
  connect(&m_run, &MailingRun::Failed, this, [this](const automation::Error& error) {
    ShowRunning(false);
    ShowError(this, windowTitle(), u"La lista no se ha exportado."_s, error);
  });
  ShowKind();
  ShowRunning(false);
}

QWidget* ExportDialog::Choices() {
  auto* choices = new QWidget(this);
  auto* layout = new QVBoxLayout(choices);
  layout->setContentsMargins({});
  auto* what = new QGroupBox(u"Qué"_s, choices);
  auto* whatLayout = new QVBoxLayout(what);
  m_all = new QRadioButton(u"Lo que se &ve (%1)"_s.arg(m_shown.RowCount()), what);
  m_all->setObjectName(u"optTodos"_s);
  m_all->setChecked(true);
  m_some = new QRadioButton(u"Los &seleccionados (%1)"_s.arg(m_selected.RowCount()), what);
  m_some->setObjectName(u"optSeleccionados"_s);
  m_some->setEnabled(m_selected.RowCount() > 0);
  whatLayout->addWidget(m_all);
  whatLayout->addWidget(m_some);
  auto* how = new QGroupBox(u"Cómo"_s, choices);
  auto* howLayout = new QVBoxLayout(how);
  for (const ListFileKind& kind : ListFileKinds()) {
    m_kinds.append(new QRadioButton(kind.title, how));
    m_kinds.last()->setObjectName(u"opt"_s + kind.suffix);
    howLayout->addWidget(m_kinds.last());
    connect(m_kinds.last(), &QRadioButton::toggled, this, &ExportDialog::ShowKind);
  }
  const auto last = static_cast<qsizetype>(QSettings().value(kindKey).toInt());
  m_kinds[last >= 0 && last < m_kinds.size() ? last : 0]->setChecked(true);
  layout->addWidget(what);
  layout->addWidget(how);
  return choices;
}

int ExportDialog::Kind() const {
  const auto chosen = std::ranges::find_if(m_kinds, [](const QRadioButton* kind) { return kind->isChecked(); });
  return static_cast<int>(chosen - m_kinds.begin());
}

void ExportDialog::ShowKind() {
  m_advice->setText(ListFileKinds().value(Kind()).advice);
}

void ExportDialog::Save() {
  const QString path = AskForListFile(*this, m_shown.title, ListFileKinds()[Kind()]);
  if (!path.isEmpty()) {
    QSettings().setValue(kindKey, Kind());
    Start(path);
  }
}

void ExportDialog::Start(const QString& path) {
  m_run.Start([table = m_some->isChecked() ? m_selected : m_shown, path](RunControl& control) {
    RunResult result;
    result.isWhole = ExportList(table, path, control);
    result.text = u"Exportado en «%1»: %2."_s.arg(path, table.CountText());
    return result;
  });
  ShowRunning(true);
}

void ExportDialog::End(const RunResult& result) {
  ShowRunning(false);
  if (!result.isWhole) {
    QDialog::reject();
    return;
  }
  m_news = result.text;
  accept();
}

void ExportDialog::reject() {
  if (m_run.IsRunning()) {
    m_run.Cancel();
  } else {
    QDialog::reject();
  }
}

void ExportDialog::ShowRunning(bool isRunning) {
  m_choices->setEnabled(!isRunning);
  m_save->setEnabled(!isRunning);
  m_progress->setVisible(isRunning);
}

}  // namespace host
