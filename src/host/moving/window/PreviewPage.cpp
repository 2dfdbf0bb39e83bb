#include "host/moving/window/PreviewPage.h"

#include "host/look/Palettes.h"
#include "platform/text/AsItStands.h"
#include "platform/text/Counted.h"
#include "platform/text/FoldForSearch.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSplitter>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QString CountOf(qint64 number) {
  return number == 0 ? u"–"_s : texts::Grouped(number);
}

QString NumbersOf(const moving::TableReport& table) {
  if (table.here.isEmpty() || table.created == 0) {
    return {};
  }
  return table.firstNumber == 0 ? u"se conservan"_s : u"nuevos desde el %1"_s.arg(table.firstNumber);
}

QString NoticeOf(const moving::TableReport& table) {
  if (table.here.isEmpty()) {
    return table.why;
  }
  QStringList notices;
  const auto add = [&notices](qint64 count, const QString& several, const QString& one = {}) {
    if (count > 0) {
      notices += count == 1 && !one.isEmpty() ? one : several.arg(texts::Grouped(count));
    }
  };
  const qint64 questions = std::ranges::count_if(table.findings, &moving::Finding::IsQuestion);
  add(table.missing, u"faltan %1 en el archivo"_s);
  add(table.changed, u"%1 cambian"_s, u"1 cambia"_s);
  add(table.revived, u"%1 vuelven a estar"_s, u"1 vuelve a estar"_s);
  add(questions, u"%1 preguntas"_s, u"1 pregunta"_s);
  add(table.findings.size() + table.moreFindings - questions, u"%1 avisos"_s, u"1 aviso"_s);
  add(table.skipped, u"%1 eliminados, fuera"_s);
  if (!table.leftColumns.isEmpty()) {
    notices += u"no se traen: %1"_s.arg(table.leftColumns.join(u", "_s));
  }
  for (auto at = table.remarks.begin(); at != table.remarks.end(); ++at) {
    notices += u"%1 (%2)"_s.arg(at.key(), texts::Grouped(at.value()));
  }
  return notices.join(u" · "_s);
}

bool Matches(const moving::Finding& finding, const QString& wanted) {
  return wanted.isEmpty() || texts::FoldForSearch(finding.Line()).contains(wanted);
}

}  // namespace

PreviewPage::PreviewPage(const QString& copies, QWidget* parent)
    : QWidget(parent),
      m_info(new QLabel(this)),
      m_tables(new GridView("grdEntra", u"Qué entra"_s,
                            {u"En el archivo"_s, u"Aquí"_s, u"Leídos"_s, u"Nuevos"_s, u"Ya estaban"_s, u"No entran"_s,
                             u"Números"_s, u"Avisos"_s},
                            this)),
      m_heading(new QLabel(this)),
      m_search(new QLineEdit(this)),
      m_findings(new GridView("grdAvisos", u"Avisos y preguntas de la tabla"_s,
                              {u"En el archivo"_s, u"Qué pasa"_s, u"Aquí hay"_s, u"Qué se hace"_s}, this)),
      m_accept(new QCheckBox(u"&Traer el resto aunque falte lo que no entra"_s, this)) {
  m_info->setObjectName(u"lblResumen"_s);
  m_info->setTextFormat(Qt::PlainText);
  m_info->setWordWrap(true);
  m_info->setAutoFillBackground(true);
  m_info->setPalette(StripPalette(StripTone::News));
  m_info->setMargin(fontMetrics().height() / 2);
  m_tables->SetWidths({24, 24, 9, 9, 13, 12, 20});
  m_findings->SetWidths({32, 38, 38});
  m_accept->setObjectName(u"chkAunqueFalten"_s);
  auto* splitter = new QSplitter(Qt::Vertical, this);
  splitter->setChildrenCollapsible(false);
  splitter->addWidget(m_tables);
  splitter->addWidget(MakeFindings());
  splitter->setStretchFactor(0, 3);
  splitter->setStretchFactor(1, 2);
  auto* save = new QPushButton(u"&Guardar informe…"_s, this);
  save->setObjectName(u"cmdGuardarPrevio"_s);
  save->setAutoDefault(false);
  auto* copy = new QLabel(
      u"Antes se hace una copia en la carpeta «%1»; con ella se deshace todo."_s.arg(QFileInfo(copies).fileName()),
      this);
  copy->setToolTip(texts::AsItStands(copies));
  copy->setTextFormat(Qt::PlainText);
  copy->setWordWrap(true);
  auto* last = new QHBoxLayout;
  last->addWidget(copy, 1);
  last->addWidget(save);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
  layout->addWidget(m_info);
  layout->addWidget(splitter, 1);
  layout->addWidget(m_accept);
  layout->addLayout(last);
  connect(m_tables, &GridView::RowReached, this, &PreviewPage::ShowFindings);
  connect(m_findings, &GridView::Chosen, this, [this](int row, int /*column*/, int choice) {
    const moving::Finding& finding = Current()->findings[m_shown[std::size_t(row)]];
    Q_EMIT Answered(finding.question, finding.choices[choice].word);
  });
  connect(m_accept, &QCheckBox::toggled, this, &PreviewPage::Changed);
  connect(save, &QPushButton::clicked, this, &PreviewPage::ReportWanted);
}

QWidget* PreviewPage::MakeFindings() {
  auto* lower = new QWidget(this);
  m_heading->setObjectName(u"lblAvisos"_s);
  m_heading->setTextFormat(Qt::PlainText);
  QFont bold = m_heading->font();
  bold.setBold(true);
  m_heading->setFont(bold);
  m_search->setObjectName(u"txtBuscarAvisos"_s);
  m_search->setPlaceholderText(u"Buscar en los avisos"_s);
  m_search->setAccessibleName(u"Buscar en los avisos"_s);
  m_search->setClearButtonEnabled(true);
  auto* first = new QHBoxLayout;
  first->addWidget(m_heading, 1);
  first->addWidget(m_search, 1);
  auto* layout = new QVBoxLayout(lower);
  layout->setContentsMargins({});
  layout->addLayout(first);
  layout->addWidget(m_findings, 1);
  connect(m_search, &QLineEdit::textChanged, this, &PreviewPage::Arrange);
  return lower;
}

bool PreviewPage::AcceptsLosses() const {
  return m_accept->isChecked();
}

bool PreviewPage::MayBring() const {
  return m_isShown && m_report.Written() > 0 && (!m_report.HasLosses() || AcceptsLosses());
}

void PreviewPage::Forget() {
  m_accept->setChecked(false);
  m_search->clear();
}

void PreviewPage::ShowText(const QString& text, bool fault) {
  m_isShown = false;
  m_info->setText(text);
  if (fault) {
    m_report = {};
    m_tables->Show(0, {});
    ShowFindings();
  }
}

QString PreviewPage::Summary() const {
  QString text = u"Todavía no se ha escrito nada. Registros nuevos: %1; ya estaban: %2; no entran: %3."_s.arg(
      texts::Grouped(m_report.Sum(&moving::TableReport::created)),
      texts::Grouped(m_report.Sum(&moving::TableReport::known)),
      texts::Grouped(m_report.Sum(&moving::TableReport::leftOut)));
  if (m_report.Written() == 0) {
    text += u" No hay nada que traer."_s;
  } else if (const qint64 questions = m_report.Questions(); questions > 0) {
    text += u" Revise las respuestas propuestas: %1."_s.arg(texts::Grouped(questions));
  }
  if (m_report.HasLosses()) {
    text += u" Algo no entraría: corríjalo en el archivo, o marque abajo que se traiga el resto."_s;
  }
  return (m_report.warnings + QStringList{text}).join(u'\n');
}

void PreviewPage::Show(const moving::ImportReport& report) {
  m_report = report;
  m_isShown = true;
  m_info->setText(Summary());
  m_accept->setVisible(report.HasLosses());
  m_tables->Show(static_cast<int>(report.tables.size()),
                 [this](int row, int column) { return TableCell(row, column); });
  ShowFindings();
}

const moving::TableReport* PreviewPage::Current() const {
  const int row = m_tables->CurrentRow();
  return row >= 0 && row < m_report.tables.size() ? &m_report.tables[row] : nullptr;
}

GridCell PreviewPage::TableCell(int row, int column) const {
  const moving::TableReport& table = m_report.tables[row];
  GridCell cell;
  cell.isDim = table.here.isEmpty();
  constexpr int firstNumber = 2;
  constexpr int lastNumber = 5;
  cell.isNumber = column >= firstNumber && column <= lastNumber;
  switch (column) {
    case 0:
      cell.text = table.there;
      break;
    case 1:
      cell.text = cell.isDim ? u"— no entra —"_s : table.here;
      break;
    case firstNumber:
      cell.text = CountOf(table.read);
      break;
    case 3:
      cell.text = CountOf(table.created);
      break;
    case 4:
      cell.text = CountOf(table.known);
      break;
    case lastNumber:
      cell.text = CountOf(cell.isDim ? table.read : table.leftOut);
      break;
    case 6:
      cell.text = NumbersOf(table);
      break;
    default: {
      cell.text = NoticeOf(table);
      const bool isLost = table.leftOut + table.missing > 0;
      const auto icon = isLost ? QStyle::SP_MessageBoxWarning : QStyle::SP_MessageBoxInformation;
      cell.icon = cell.text.isEmpty() ? QIcon() : style()->standardIcon(icon);
    }
  }
  return cell;
}

GridCell PreviewPage::FindingCell(int row, int column) const {
  const moving::Finding& finding = Current()->findings[m_shown[std::size_t(row)]];
  switch (column) {
    case 0:
      return {.text = finding.label.isEmpty() ? finding.name : u"%1 · %2"_s.arg(finding.name, finding.label)};
    case 1:
      return {.text = finding.what};
    case 2:
      return {.text = finding.here};
    default:
      break;
  }
  if (!finding.IsQuestion()) {
    return {};
  }
  GridCell cell;
  cell.text = finding.choices[finding.answer].text;
  cell.choice = static_cast<int>(finding.answer);
  cell.choices = [choices = finding.choices] {
    QStringList texts;
    for (const moving::Choice& choice : choices) {
      texts.append(choice.text);
    }
    return texts;
  };
  return cell;
}

void PreviewPage::ShowFindings() {
  const moving::TableReport* table = Current();
  const qint64 more = table == nullptr ? 0 : table->moreFindings;
  if (table == nullptr) {
    m_heading->clear();
  } else {
    const qint64 count = table->findings.size() + more;
    const QString counted = texts::Counted(count, u"cosa que ver"_s, u"cosas que ver"_s);
    const QString shown = u", aquí las primeras %1"_s.arg(texts::Grouped(table->findings.size()));
    m_heading->setText((table->here.isEmpty() ? table->there : table->here) + QStringLiteral(": ") + counted +
                       (more > 0 ? shown : QString()));
  }
  Arrange();
}

void PreviewPage::Arrange() {
  m_shown.clear();
  const moving::TableReport* table = Current();
  const QString wanted = texts::FoldForSearch(m_search->text().trimmed());
  for (int i = 0; table != nullptr && i < table->findings.size(); ++i) {
    if (Matches(table->findings[i], wanted)) {
      m_shown.push_back(i);
    }
  }
  m_findings->Show(static_cast<int>(m_shown.size()), [this](int row, int column) { return FindingCell(row, column); });
}

}  // namespace host
