#include "host/desktop/CopiesDialog.h"

#include "database/Database.h"
#include "database/Maintenance.h"
#include "database/Place.h"
#include "host/help/HelpDesk.h"
#include "host/look/PlainLabel.h"
#include "host/records/MomentText.h"
#include "host/records/NodeCatalog.h"
#include "host/services/ErrorBox.h"
#include "host/services/PlainBox.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/automation/Error.h"
#include "platform/process/PrivateFiles.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QTreeWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString copyFilter = u"Bases de datos (*.db *.antes-*);;Todos los archivos (*)"_s;

QLocale Spanish() {
  return QLocale(QLocale::Spanish, QLocale::Spain);
}

QString SizeText(qint64 bytes) {
  return Spanish().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

QString CountsText(const database::CopyContent& content) {
  QStringList counts;
  for (const Node& node : NodeCatalog()) {
    const qint64 rows = content.rows.value(node.table);
    if (rows > 0) {
      counts.append(u"%1: %2"_s.arg(node.title, Spanish().toString(rows)));
    }
  }
  return counts.isEmpty() ? u"No hay registros en ella."_s : counts.join(u" · "_s);
}

// What is in a copy, or why that can't be said.
QString ContentText(const QString& copy) {
  try {
    const database::CopyContent content = database::LookIntoCopy(copy);
    if (content.version == 0) {
      return u"No es una base de datos de este programa."_s;
    }
    if (content.version > database::SchemaVersion()) {
      return u"Es de una versión más nueva del programa: instálela para usar esta copia."_s;
    }
    const QString older = content.version < database::SchemaVersion()
                              ? u" Es de una versión anterior, y se pondrá al día al abrirla."_s
                              : QString();
    return CountsText(content) + older;
  } catch (const automation::Error& error) {
    return error.Description();
  }
}

}  // namespace

CopiesDialog::CopiesDialog(const QString& connectionString, const QString& title, bool mayRestore, QWidget* parent)
    : QDialog(parent),
      m_connectionString(connectionString),
      m_title(title),
      m_mayRestore(mayRestore),
      m_place(NamedLabel(u"lblLugar"_s, this)),
      m_list(new QTreeWidget(this)),
      m_content(NamedLabel(u"lblContenido"_s, this)),
      m_state(NamedLabel(u"lblEstado"_s, this)),
      m_progress(new QProgressBar(this)) {
  setObjectName(u"copiesDialog"_s);
  setWindowTitle(u"Copias de seguridad"_s);
  setProperty(HelpDesk::topicProperty, u"copias"_s);
  m_list->setObjectName(u"lstCopias"_s);
  m_list->setAccessibleName(u"Copias que hay"_s);
  m_list->setHeaderLabels({u"Fecha"_s, u"Tamaño"_s, u"Archivo"_s});
  m_list->setRootIsDecorated(false);
  m_list->setUniformRowHeights(true);
  m_list->setAlternatingRowColors(true);
  m_progress->setRange(0, 0);
  m_progress->setAccessibleName(u"Se está haciendo la copia"_s);
  constexpr int contentLines = 4;
  m_content->setMinimumHeight(contentLines * fontMetrics().lineSpacing());
  m_content->setAlignment(Qt::AlignTop);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(m_place);
  layout->addWidget(m_list, 1);
  layout->addWidget(m_content);
  layout->addWidget(m_state);
  layout->addWidget(m_progress);
  AddButtons();
  connect(m_list, &QTreeWidget::currentItemChanged, this, &CopiesDialog::ShowContent);
  connect(&m_run, &MailingRun::Finished, this, [this](const RunResult& result) {
    ShowRunning(false);
    m_state->setText(result.text);
    ReadCopies();
  });
  connect(&m_run, &MailingRun::Failed, this, [this](const automation::Error& error) {
    ShowRunning(false);
    ShowError(this, m_title, u"No se ha hecho la copia."_s, error);
  });
  ShowPlace();
  ReadCopies();
  ShowRunning(false);
  constexpr QSize usualSize(680, 460);
  resize(usualSize);
}

void CopiesDialog::AddButtons() {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  buttons->button(QDialogButtonBox::Close)->setText(u"&Cerrar"_s);
  const auto add = [&](const char* name, const QString& text, auto work) {
    QPushButton* button = buttons->addButton(text, QDialogButtonBox::ActionRole);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, work);
    return button;
  };
  m_make = add("cmdCopiar", u"&Hacer una copia…"_s, [this] { MakeCopy(); });
  m_restore = add("cmdRestaurar", u"&Restaurar esta…"_s, [this] { Restore(Chosen()); });
  m_restoreOther = add("cmdRestaurarOtra", u"Restaurar &otra…"_s, [this] { RestoreOther(); });
  connect(buttons, &QDialogButtonBox::rejected, this, &CopiesDialog::reject);
  layout()->addWidget(buttons);
}

void CopiesDialog::ShowPlace() {
  const QString folder = CopiesFolder(m_connectionString);
  if (folder.isEmpty()) {
    m_place->setText(
        u"De las copias de un servidor se encarga quien lo administra. Aquí puede copiar la base de datos en un archivo."_s);
    return;
  }
  const QString file = database::PlaceOf(m_connectionString).file;
  const bool isSameDisk = QStorageInfo(QFileInfo(folder).exists() ? folder : QFileInfo(file).path()).device() ==
                          QStorageInfo(QFileInfo(file).path()).device();
  m_place->setText(
      u"Las copias de cada día están en «%1»."_s.arg(folder) +
      (isSameDisk
           ? u" Está en el mismo disco que la base de datos: si el disco falla, se pierden las dos cosas. Haga de vez en cuando una copia en otro, por ejemplo en una memoria USB."_s
           : QString()));
}

void CopiesDialog::ReadCopies() {
  m_list->clear();
  const QList<CopyFile> copies = CopiesOf(m_connectionString);
  for (const CopyFile& copy : copies) {
    auto* item =
        new QTreeWidgetItem(m_list, {DayAndTime(copy.moment), SizeText(copy.bytes), QFileInfo(copy.path).fileName()});
    item->setData(0, Qt::UserRole, copy.path);
  }
  for (int column = 0; column < m_list->columnCount(); ++column) {
    m_list->resizeColumnToContents(column);
    m_list->setColumnWidth(column, m_list->columnWidth(column) + fontMetrics().averageCharWidth() * 2);
  }
  m_list->setCurrentItem(m_list->topLevelItem(0));
  ShowContent();
}

QString CopiesDialog::Chosen() const {
  return m_list->currentItem() == nullptr ? QString() : m_list->currentItem()->data(0, Qt::UserRole).toString();
}

void CopiesDialog::ShowContent() {
  const QString copy = Chosen();
  m_content->setText(copy.isEmpty() ? u"Todavía no hay ninguna copia."_s : ContentText(copy));
  m_restore->setEnabled(m_mayRestore && !copy.isEmpty() && !m_run.IsRunning());
}

void CopiesDialog::MakeCopy() {
  QString folder = CopiesFolder(m_connectionString);
  if (folder.isEmpty()) {
    folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  } else {
    process::CreatePrivateFolder(folder);
  }
  QFileDialog dialog(this, u"Hacer una copia"_s, folder, u"Bases de datos (*.db)"_s);
  dialog.setObjectName(u"dlgCopia"_s);
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  // A copy never takes the place of a file.
  dialog.setOption(QFileDialog::DontConfirmOverwrite);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(u"db"_s);
  const QString file = database::PlaceOf(m_connectionString).file;
  dialog.selectFile(u"%1-%2.db"_s.arg(file.isEmpty() ? u"kel"_s : QFileInfo(file).completeBaseName(),
                                      QDateTime::currentDateTime().toString(u"yyyy-MM-dd-HHmm"_s)));
  if (dialog.exec() != QDialog::Accepted) {
    return;
  }
  m_run.Start([connectionString = m_connectionString, file = dialog.selectedFiles().value(0)](RunControl& control) {
    RunResult result;
    try {
      const database::CopySize size =
          database::CopyDatabase(connectionString, file, [&control] { return control.IsCancelled(); });
      result.text = u"Copia hecha y comprobada: «%1», %2, %3 registros."_s.arg(file, SizeText(size.bytes),
                                                                               Spanish().toString(size.rows));
    } catch (const automation::Error& error) {
      if (error.Number() != adodb::Stopped) {
        throw;
      }
      result.text = u"Interrumpido: no se ha dejado ninguna copia."_s;
    }
    return result;
  });
  ShowRunning(true);
}

void CopiesDialog::RestoreOther() {
  QFileDialog dialog(this, u"Restaurar una copia"_s, QStandardPaths::writableLocation(QStandardPaths::HomeLocation),
                     copyFilter);
  dialog.setObjectName(u"dlgCopia"_s);
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setFileMode(QFileDialog::ExistingFile);
  if (dialog.exec() == QDialog::Accepted) {
    Restore(dialog.selectedFiles().value(0));
  }
}

void CopiesDialog::Restore(const QString& copy) {
  const bool isFile = database::PlaceOf(m_connectionString).IsFile();
  PlainBox box(QMessageBox::Warning, m_title,
               u"¿Desea poner la copia «%1» en lugar de la base de datos?"_s.arg(QFileInfo(copy).fileName()),
               QMessageBox::Yes | QMessageBox::No, this);
  box.SetFurtherText(
      ContentText(copy) +
      (isFile
           ? u"\n\nLo que se ha guardado después de la copia dejará de verse. La base de datos de ahora se conserva junto a ella, con «antes» y la fecha en el nombre."_s
           : u"\n\nLo que se ha guardado después de la copia dejará de verse. Las tablas de ahora se conservan en otro esquema del servidor."_s) +
      u" El programa la cierra y vuelve a abrirse; nadie más puede tenerla abierta."_s);
  box.setDefaultButton(QMessageBox::No);
  if (box.exec() == QMessageBox::Yes) {
    m_wanted = copy;
    accept();
  }
}

void CopiesDialog::reject() {
  if (m_run.IsRunning()) {
    m_run.Cancel();
  } else {
    QDialog::reject();
  }
}

void CopiesDialog::ShowRunning(bool isRunning) {
  m_progress->setVisible(isRunning);
  m_make->setEnabled(!isRunning);
  m_restoreOther->setEnabled(m_mayRestore && !isRunning);
  m_restore->setEnabled(m_mayRestore && !isRunning && !Chosen().isEmpty());
  m_state->setText(isRunning ? u"Copiando…"_s : QString());
}

}  // namespace host
