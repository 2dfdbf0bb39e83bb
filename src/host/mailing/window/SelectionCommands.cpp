#include "host/mailing/window/SelectionCommands.h"

#include "host/mailing/window/BackgroundReader.h"
#include "host/mailing/window/PeoplePanel.h"
#include "host/services/PlainBox.h"

#include <QAction>
#include <QInputDialog>
#include <QMainWindow>
#include <QMenu>
#include <QPushButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

SelectionCommands::SelectionCommands(const MailingContext& context, BackgroundReader& reader, PeoplePanel& people,
                                     QMainWindow& window)
    : QObject(&window), m_context(context), m_reader(reader), m_people(people), m_window(window) {
  const auto add = [this](const QString& text, const char* name) {
    auto* action = new QAction(text, this);
    action->setObjectName(QString::fromLatin1(name));
    return action;
  };
  m_save = add(u"&Guardar"_s, "actGuardarSeleccion");
  m_save->setShortcut(QKeySequence::Save);
  m_saveAs = add(u"Guardar &como…"_s, "actGuardarComo");
  m_rename = add(u"Cambiar el &nombre…"_s, "actCambiarNombre");
  m_share = add(u"Co&mpartida con todas las personas"_s, "actCompartida");
  m_share->setCheckable(true);
  m_delete = add(u"&Eliminar…"_s, "actEliminarSeleccion");
  connect(m_save, &QAction::triggered, this, &SelectionCommands::Save);
  connect(m_saveAs, &QAction::triggered, this, &SelectionCommands::SaveAs);
  connect(m_rename, &QAction::triggered, this, &SelectionCommands::Rename);
  connect(m_share, &QAction::triggered, this, &SelectionCommands::Share);
  connect(m_delete, &QAction::triggered, this, &SelectionCommands::Delete);
  Update();
}

void SelectionCommands::FillMenu(QMenu& menu) {
  menu.addActions({m_save, m_saveAs});
  menu.addSeparator();
  menu.addActions({m_rename, m_share, m_delete});
}

void SelectionCommands::SetChoices(const QList<StoredSelection>& selections) {
  m_selections = selections;
  Update();
}

const StoredSelection* SelectionCommands::Chosen() const {
  const auto found = std::ranges::find(m_selections, m_people.Chosen().id, &StoredSelection::id);
  return found == m_selections.end() ? nullptr : &*found;
}

bool SelectionCommands::MayChangeChosen() const {
  return Chosen() != nullptr && !m_context.readOnly && MayChange(*Chosen(), m_context.user);
}

void SelectionCommands::Update() {
  const bool mayChange = MayChangeChosen();
  m_save->setEnabled(!m_context.readOnly && (mayChange ? m_people.IsChanged() : Chosen() == nullptr));
  m_saveAs->setEnabled(!m_context.readOnly);
  m_rename->setEnabled(mayChange);
  m_share->setEnabled(mayChange);
  m_share->setChecked(Chosen() != nullptr && Chosen()->isShared);
  m_delete->setEnabled(mayChange);
}

bool SelectionCommands::MayLeave() {
  if (!m_people.IsChanged()) {
    return true;
  }
  PlainBox box(QMessageBox::Question, m_context.title, u"Las personas elegidas no se han guardado. ¿Desea dejarlas?"_s,
               QMessageBox::Yes | QMessageBox::No, &m_window);
  box.setDefaultButton(QMessageBox::No);
  return box.exec() == QMessageBox::Yes;
}

QString SelectionCommands::AskForName(const QString& title, const QString& before) {
  QInputDialog dialog(&m_window);
  dialog.setObjectName(u"dlgNombre"_s);
  dialog.setWindowTitle(title);
  dialog.setLabelText(u"&Nombre de la selección:"_s);
  dialog.setTextValue(before);
  return dialog.exec() == QDialog::Accepted ? dialog.textValue().trimmed() : QString();
}

void SelectionCommands::Do(Write write) {
  m_reader.Run(BackgroundReader::Topic::Write, [this, write = std::move(write)](adodb::Connection& connection) {
    const int chosen = write(connection);
    return [this, chosen] { Q_EMIT Written(chosen); };
  });
}

void SelectionCommands::Save() {
  if (Chosen() == nullptr) {
    SaveAs();
    return;
  }
  Do([selection = m_people.Chosen(), before = m_people.Stored(), user = m_context.user](adodb::Connection& connection) {
    return SaveSelection(connection, selection, before, user);
  });
}

void SelectionCommands::SaveAs() {
  SavedSelection selection = m_people.Chosen();
  selection.name = AskForName(u"Guardar la selección"_s, {});
  selection.id = 0;
  if (!selection.name.isEmpty()) {
    Do([selection, user = m_context.user](adodb::Connection& connection) {
      return SaveSelection(connection, selection, {}, user);
    });
  }
}

void SelectionCommands::Rename() {
  const int id = Chosen()->id;
  const QString name = AskForName(u"Cambiar el nombre"_s, Chosen()->name);
  if (!name.isEmpty()) {
    Do([id, name, user = m_context.user](adodb::Connection& connection) {
      RenameSelection(connection, id, name, user);
      return id;
    });
  }
}

void SelectionCommands::Share(bool isShared) {
  Do([id = Chosen()->id, isShared, user = m_context.user](adodb::Connection& connection) {
    ShareSelection(connection, id, isShared, user);
    return id;
  });
}

void SelectionCommands::Delete() {
  const StoredSelection selection = *Chosen();
  PlainBox box(QMessageBox::Question, m_context.title, u"¿Desea eliminar la selección «%1»?"_s.arg(selection.name),
               QMessageBox::Yes | QMessageBox::No, &m_window);
  box.SetFurtherText(selection.isShared
                         ? u"La comparten todas las personas. Nadie se elimina de la lista de personas."_s
                         : u"Nadie se elimina de la lista de personas."_s);
  box.setDefaultButton(QMessageBox::No);
  if (box.exec() == QMessageBox::Yes) {
    Do([selection, user = m_context.user](adodb::Connection& connection) {
      DeleteSelection(connection, selection.id, user);
      return 0;
    });
  }
}

}  // namespace host
