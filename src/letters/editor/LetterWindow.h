#pragma once

#include "letters/editor/LetterEdit.h"
#include "letters/editor/LetterPage.h"

class QComboBox;
class QDialog;
class QLabel;
class QLineEdit;
class QMenuBar;
class QPushButton;
class QToolBar;

namespace letters {

class Commands;
class CommonDialog;
class EditorArea;
class FieldList;
class FieldMenu;

/// The controls of the letter editor.
struct LetterWindow {
  void setupUi(QDialog* window);
  /// Leaves what serves a letter that is only read: it can be searched, copied, printed and stored as it is.
  void ServeReading() const;

  Commands* commands = nullptr;
  EditorArea* area = nullptr;
  FieldMenu* mnuCampos = nullptr;
  FieldList* lstCampos = nullptr;
  LetterPage* picFondo = nullptr;
  LetterEdit* rtfCarta = nullptr;
  QToolBar* tlbEstandar = nullptr;
  QToolBar* tlbFormato = nullptr;
  QComboBox* cboFuentes = nullptr;
  QComboBox* cboTamaño = nullptr;
  QLineEdit* txtMargenIzdo = nullptr;
  QLineEdit* txtMargenDcho = nullptr;
  CommonDialog* dlgCarta = nullptr;
  /// Under the page: a notice, a letter that could not be saved, the check of markers, the page, the zoom.
  QLabel* lblAviso = nullptr;
  QPushButton* cmdRecuperar = nullptr;
  QPushButton* cmdDescartar = nullptr;
  QPushButton* cmdComprobar = nullptr;
  QLabel* lblPagina = nullptr;
  QLabel* lblZoom = nullptr;

 private:
  void CreateBars(QDialog* window, QMenuBar* menus);
  void ServeWhileHeld(const QDialog& window) const;
  QWidget* CreateStrip();
  QWidget* CreateMargins(QWidget* parent);
};

}  // namespace letters
