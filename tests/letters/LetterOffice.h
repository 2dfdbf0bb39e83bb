#pragma once

#include "letters/editor/LetterEdit.h"
#include "support/Expect.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QToolButton>

/// A host with a printer, and a folder of its own for letters that could not be saved.
class LetterOffice : public support::TestHost {
 public:
  LetterOffice() {
    desktop.printers = 1;
    qputenv("XDG_DATA_HOME", Path(QStringLiteral("datos")).toUtf8());
  }

  int AddLetter(const QString& name, const QString& content, const QString& margin = QStringLiteral("2,5")) {
    Query(
        u"INSERT INTO CartasModelo (Nombre, Contenido, MargenIzquierdo, MargenDerecho) VALUES "
        u"('{0}','{1}','{2}','{2}')",
        name, content, margin);
    return Id(u"SELECT MAX(IDCartaModelo) AS N FROM CartasModelo");
  }

  /// The statements of the last request on letters, and that on locks which the editor runs itself.
  QStringList OwnStatements() {
    QStringList own = Recording().Log();
    own.removeIf([](const QString& entry) {
      return entry.contains(u"BloqueoRegistros") && !entry.startsWith(u"DELETE FROM BloqueoRegistros WHERE codUsuario");
    });
    return own;
  }
};

inline letters::LetterEdit* Letter(const support::DialogUser& dialog) {
  return dialog.Find<letters::LetterEdit>("rtfCarta");
}

/// Uses a menu item.
inline void Do(const support::DialogUser& dialog, const char* item) {
  dialog.Find<QAction>(item)->trigger();
}

inline bool IsPressed(const support::DialogUser& dialog, const char* button) {
  return dialog.Find<QToolButton>(button)->isChecked();
}
