#include "host/moving/window/FilePage.h"

#include "platform/automation/Error.h"
#include "platform/text/Counted.h"

#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QSignalBlocker>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString lastFolder = u"Traer/Carpeta"_s;

bool IsList(const QString& path) {
  try {
    return moving::KindOfFile(path) == moving::FileKind::List;
  } catch (const automation::Error&) {
    return false;
  }
}

// The beginning of a row, to tell it from others.
QString Words(const moving::SourceRow& row) {
  constexpr qsizetype most = 60;
  QStringList words;
  for (const moving::SourceCell& cell : row) {
    words.append(cell.text.left(most).simplified());
  }
  words.removeAll(QString());
  const QString text = words.join(u" · "_s);
  return text.size() > most ? text.left(most) + u'…' : text;
}

}  // namespace

FilePage::FilePage(QWidget* parent)
    : QWidget(parent),
      m_file(new QLineEdit(this)),
      m_state(new QLabel(this)),
      m_sample(new GridView("grdMuestra", u"Primeras filas"_s, {}, this)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
  auto* form = new QFormLayout;
  form->setRowWrapPolicy(QFormLayout::WrapLongRows);
  auto* row = new QHBoxLayout;
  m_file->setObjectName(u"txtArchivo"_s);
  m_file->setPlaceholderText(u".mdb, .accdb, .ods, .xlsx o .csv"_s);
  auto* browse = new QPushButton(u"&Examinar…"_s, this);
  browse->setObjectName(u"cmdExaminar"_s);
  browse->setAutoDefault(false);
  row->addWidget(m_file, 1);
  row->addWidget(browse);
  auto* label = new QLabel(u"A&rchivo:"_s, this);
  label->setBuddy(m_file);
  form->addRow(label, row);
  m_sheet = AddBox("cboHoja", u"&Hoja o tabla:"_s, *form);
  m_headings = AddBox("cboTitulos", u"Tít&ulos:"_s, *form);
  m_encoding = AddBox("cboCodificacion", u"&Letras:"_s, *form);
  m_encoding->addItem(u"Las que parecen"_s, QString());
  m_encoding->addItem(u"UTF-8"_s, u"utf-8"_s);
  m_encoding->addItem(u"Windows (Europa occidental)"_s, u"windows-1252"_s);
  m_encoding->addItem(u"UTF-16"_s, u"utf-16"_s);
  m_separator = AddBox("cboSeparador", u"Se&parador:"_s, *form);
  m_separator->addItem(u"El que parece"_s, QChar());
  m_separator->addItem(u"Punto y coma"_s, QChar(u';'));
  m_separator->addItem(u"Coma"_s, QChar(u','));
  m_separator->addItem(u"Tabulador"_s, QChar(u'\t'));
  m_separator->addItem(u"Barra"_s, QChar(u'|'));
  layout->addLayout(form);
  m_state->setObjectName(u"lblEstadoArchivo"_s);
  m_state->setTextFormat(Qt::PlainText);
  m_state->setWordWrap(true);
  layout->addWidget(m_state);
  layout->addWidget(m_sample, 1);
  setTabOrder(m_file, browse);
  setTabOrder(browse, m_sheet);
  setTabOrder(m_sheet, m_headings);
  setTabOrder(m_headings, m_encoding);
  setTabOrder(m_encoding, m_separator);
  setTabOrder(m_separator, m_sample);
  connect(browse, &QPushButton::clicked, this, &FilePage::Browse);
  connect(m_file, &QLineEdit::editingFinished, this, [this] { SetFile(m_file->text()); });
  connect(m_sheet, &QComboBox::activated, this, &FilePage::ShowSheet);
  connect(m_headings, &QComboBox::activated, this, &FilePage::ChooseHeadings);
  for (const QComboBox* box : {m_encoding, m_separator}) {
    connect(box, &QComboBox::activated, this, &FilePage::FileWanted);
  }
  SetFile({});
}

QComboBox* FilePage::AddBox(const char* name, const QString& label, QFormLayout& form) {
  auto* box = new QComboBox(this);
  box->setObjectName(QString::fromLatin1(name));
  box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  auto* caption = new QLabel(label, this);
  caption->setBuddy(box);
  form.addRow(caption, box);
  return box;
}

QString FilePage::File() const {
  return m_read;
}

moving::ReadWishes FilePage::Wishes() const {
  moving::ReadWishes wishes;
  wishes.sheet = m_sheet->currentData().toString();
  wishes.headings = m_wished;
  wishes.list = {m_encoding->currentData().toString(), m_separator->currentData().toChar()};
  return wishes;
}

void FilePage::SetFile(const QString& path) {
  if (!path.isEmpty() && path == m_read) {
    return;
  }
  m_read = path;
  m_file->setText(path);
  const bool isList = IsList(path);
  for (QComboBox* box : {m_encoding, m_separator}) {
    box->setCurrentIndex(0);
    box->setEnabled(isList);
  }
  m_wished.clear();
  for (QComboBox* box : {m_sheet, m_headings}) {
    box->clear();
    box->setEnabled(false);
  }
  m_state->setText(path.isEmpty()
                       ? u"Elija el archivo de otro programa que se trae: una base de datos (.mdb, .accdb), una hoja "
                         "de cálculo (.ods, .xlsx) o una lista (.csv). Nada se escribe hasta el paso 4."_s
                       : QString());
  m_sample->Show(0, {});
  if (!path.isEmpty()) {
    Q_EMIT FileWanted();
  }
}

void FilePage::Browse() {
  QSettings settings;
  const QString path = QFileDialog::getOpenFileName(
      window(), u"Archivo que se trae"_s, settings.value(lastFolder).toString(),
      u"Datos de otros programas (*.mdb *.accdb *.ods *.xlsx *.csv *.txt *.tsv);;Todos los archivos (*)"_s);
  if (!path.isEmpty()) {
    settings.setValue(lastFolder, QFileInfo(path).path());
    SetFile(path);
  }
}

void FilePage::ShowReading() {
  m_state->setText(u"Leyendo…"_s);
  m_sample->Show(0, {});
}

void FilePage::ShowFault(const QString& text) {
  m_state->setText(text);
  m_sample->Show(0, {});
}

void FilePage::Show(const moving::Outline& outline) {
  m_outline = outline;
  const QString chosen = m_sheet->currentData().toString();
  const QSignalBlocker quiet(m_sheet);
  m_sheet->clear();
  m_sheet->addItem(u"Todas"_s, QString());
  for (const moving::OutlinedTable& table : outline.tables) {
    m_sheet->addItem(table.table.name, table.table.name);
  }
  m_sheet->setCurrentIndex(qMax(0, m_sheet->findData(chosen)));
  m_sheet->setEnabled(outline.tables.size() > 1);
  QString text = texts::Counted(outline.tables.size(), u"tabla"_s, u"tablas"_s) + QStringLiteral(", ") +
                 texts::Counted(outline.Rows(), u"registro."_s, u"registros."_s);
  if (!outline.elsewhere.isEmpty()) {
    text += u" Están en otro archivo, y no se leen: %1."_s.arg(outline.elsewhere.join(u", "_s));
  }
  if (!outline.unreadable.isEmpty()) {
    text += u" Están dañadas: %1."_s.arg(outline.unreadable.join(u", "_s));
  }
  m_state->setText(text);
  ShowSheet();
}

void FilePage::ShowSheet() {
  const moving::OutlinedTable* shown = Current();
  if (shown == nullptr) {
    m_sample->Show(0, {});
    return;
  }
  const moving::OutlinedTable& table = *shown;
  ShowHeadings(table);
  QStringList headings;
  for (const moving::SourceColumn& column : table.table.columns) {
    headings.append(column.name);
  }
  m_sample->Rows().SetHeadings(headings);
  m_sample->Show(static_cast<int>(table.first.size()), [rows = table.first](int at, int column) {
    const moving::SourceCell cell = rows[at].value(column);
    constexpr qsizetype most = 100;
    return GridCell{.text = cell.text.left(most).simplified(), .isNumber = cell.kind == moving::Cell::Number};
  });
}

const moving::OutlinedTable* FilePage::Current() const {
  const int row = qMax(0, m_sheet->currentIndex() - 1);
  return row < m_outline.tables.size() ? &m_outline.tables[row] : nullptr;
}

// Every row from which the headings might come, as far down as they are looked for.
void FilePage::ShowHeadings(const moving::OutlinedTable& table) {
  const QSignalBlocker quiet(m_headings);
  m_headings->clear();
  m_headings->addItem(u"Los que parecen"_s, 0);
  moving::SourceRow headings;
  for (const moving::SourceColumn& column : table.table.columns) {
    headings.append({moving::Cell::Text, column.name});
  }
  QList<moving::SourceRow> rows = table.table.above;
  rows.append(headings);
  rows.append(table.first);
  for (int i = 0; i < qMin(int(rows.size()), moving::mostRowsAbove); ++i) {
    m_headings->addItem(u"%1.ª fila: %2"_s.arg(QString::number(i + 1), Words(rows[i])), i + 1);
  }
  m_headings->setCurrentIndex(qMax(0, m_headings->findData(m_wished.value(table.table.name))));
  // The tables of a database have their own.
  m_headings->setEnabled(!table.table.count);
}

void FilePage::ChooseHeadings() {
  const QString sheet = Current()->table.name;
  const int row = m_headings->currentData().toInt();
  if (row == m_wished.value(sheet)) {
    return;
  }
  m_wished.insert(sheet, row);
  Q_EMIT FileWanted();
}

}  // namespace host
