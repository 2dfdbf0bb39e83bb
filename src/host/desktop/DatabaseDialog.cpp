#include "host/desktop/DatabaseDialog.h"

#include "database/Database.h"
#include "database/Place.h"
#include "host/desktop/RecentDatabases.h"
#include "host/help/HelpDesk.h"
#include "host/look/PlainLabel.h"
#include "host/services/PlainBox.h"
#include "platform/automation/Error.h"
#include "platform/process/PrivateFiles.h"
#include "platform/text/AsItStands.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

DatabaseDialog::DatabaseDialog(const QString& reason, const QString& usualFile, const QString& unreadable,
                               QWidget* parent)
    : QDialog(parent),
      m_usualFile(usualFile),
      m_copyPlace(unreadable.isEmpty() ? usualFile : unreadable),
      m_recent(new QListWidget(this)),
      m_open(nullptr) {
  setObjectName(u"databaseDialog"_s);
  setWindowTitle(u"Elegir la base de datos"_s);
  setProperty(HelpDesk::topicProperty, u"bases"_s);
  auto* layout = new QVBoxLayout(this);
  auto* why = PlainLabel(reason, this);
  why->setObjectName(u"lblMotivo"_s);
  layout->addWidget(why);
  ShowRecent(*layout);
  AddWay(*layout, "cmdCrear", u"Crear una &nueva…"_s, &DatabaseDialog::Create);
  AddWay(*layout, "cmdAbrirArchivo", u"Abrir un &archivo…"_s, &DatabaseDialog::OpenFile);
  AddWay(*layout, "cmdServidor", u"Conectar con un &servidor…"_s, &DatabaseDialog::OpenServer);
  AddWay(*layout, "cmdRestaurar", u"&Restaurar una copia…"_s, &DatabaseDialog::RestoreCopy)
      ->setVisible(!unreadable.isEmpty() || !QFileInfo::exists(m_usualFile));
  AddWay(*layout, "cmdDemostracion", u"Ver la &demostración"_s, &DatabaseDialog::Demonstrate);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Cancel)->setText(u"&Cancelar"_s);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);
  constexpr int width = 46;
  setMinimumWidth(width * fontMetrics().averageCharWidth());
}

QPushButton* DatabaseDialog::AddWay(QVBoxLayout& layout, const char* name, const QString& text,
                                    void (DatabaseDialog::*way)()) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(QString::fromLatin1(name));
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, way);
  layout.addWidget(button);
  return button;
}

void DatabaseDialog::ShowRecent(QVBoxLayout& layout) {
  const RecentDatabases recent = TakeRecentDatabases();
  m_recent->setObjectName(u"lstRecientes"_s);
  auto* label = new QLabel(u"&Las últimas:"_s, this);
  label->setBuddy(m_recent);
  for (const QString& each : recent.strings) {
    const QString shown = database::PlaceOf(each).shown;
    auto* item = new QListWidgetItem(shown, m_recent);
    item->setData(Qt::UserRole, each);
    item->setToolTip(texts::AsItStands(shown));
  }
  m_recent->setTextElideMode(Qt::ElideLeft);
  m_recent->setCurrentRow(0);
  if (recent.gone > 0) {
    layout.addWidget(PlainLabel(GoneText(recent.gone), this));
  }
  layout.addWidget(label);
  layout.addWidget(m_recent, 1);
  m_open = AddWay(layout, "cmdAbrir", u"A&brir la elegida"_s, &DatabaseDialog::OpenRecent);
  m_open->setDefault(true);
  for (QWidget* each : {static_cast<QWidget*>(label), static_cast<QWidget*>(m_recent), static_cast<QWidget*>(m_open)}) {
    each->setVisible(!recent.strings.isEmpty());
  }
  connect(m_recent, &QListWidget::itemActivated, this, &DatabaseDialog::OpenRecent);
}

void DatabaseDialog::OpenRecent() {
  if (m_recent->currentItem() != nullptr) {
    Choose({.connectionString = m_recent->currentItem()->data(Qt::UserRole).toString()});
  }
}

void DatabaseDialog::Create() {
  process::CreatePrivateFolder(QFileInfo(m_usualFile).path());
  const QString file = AskForFile(u"Crear una base de datos"_s, m_usualFile, true);
  if (file.isEmpty()) {
    return;
  }
  if (QFileInfo::exists(file)) {
    PlainBox(QMessageBox::Information, windowTitle(),
             u"Ya existe «%1». Dé otro nombre a la nueva, o abra esa con «Abrir un archivo…»."_s.arg(file),
             QMessageBox::Ok, this)
        .exec();
    return;
  }
  Choose({.connectionString = database::ConnectionStringForFile(file), .create = true});
}

void DatabaseDialog::OpenFile() {
  const QString file = AskForFile(u"Abrir una base de datos"_s, m_usualFile, false);
  if (!file.isEmpty()) {
    Choose({.connectionString = database::ConnectionStringForFile(file)});
  }
}

void DatabaseDialog::OpenServer() {
  bool isAccepted = false;
  const QString text =
      QInputDialog::getText(this, windowTitle(),
                            u"Dirección de la base de datos, como la da quien administra el servidor:"_s,
                            QLineEdit::Normal, u"postgresql://usuario@servidor/base"_s, &isAccepted)
          .trimmed();
  if (!isAccepted || text.isEmpty()) {
    return;
  }
  try {
    database::PlaceOf(text);
  } catch (const automation::Error& error) {
    PlainBox(QMessageBox::Warning, windowTitle(), error.Description(), QMessageBox::Ok, this).exec();
    return;
  }
  Choose({.connectionString = text});
}

void DatabaseDialog::RestoreCopy() {
  const QString copy = AskForFile(u"Restaurar una copia"_s, m_copyPlace, false);
  if (!copy.isEmpty()) {
    process::CreatePrivateFolder(QFileInfo(m_copyPlace).path());
    Choose({.connectionString = database::ConnectionStringForFile(m_copyPlace), .copy = copy});
  }
}

void DatabaseDialog::Demonstrate() {
  Choose({.demonstration = true});
}

QString DatabaseDialog::AskForFile(const QString& title, const QString& proposed, bool isNew) {
  QFileDialog dialog(this, title, QFileInfo(proposed).path(),
                     u"Bases de datos (*.db *.antes-*);;Todos los archivos (*)"_s);
  dialog.setObjectName(u"dlgBase"_s);
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setOption(QFileDialog::DontConfirmOverwrite);
  dialog.setAcceptMode(isNew ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(isNew ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  if (isNew) {
    dialog.setDefaultSuffix(u"db"_s);
    dialog.selectFile(QFileInfo(proposed).fileName());
  }
  return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

void DatabaseDialog::Choose(const NextStart& next) {
  m_chosen = next;
  accept();
}

}  // namespace host
