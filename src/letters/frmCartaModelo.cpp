#include "documents/rtf/Rtf.h"
#include "letters/Dialogs.h"
#include "letters/editor/Commands.h"
#include "letters/editor/EditorArea.h"
#include "letters/editor/FieldMenu.h"
#include "letters/editor/LetterDesk.h"
#include "letters/editor/LetterName.h"
#include "letters/editor/LetterOutput.h"
#include "letters/editor/LetterWindow.h"
#include "letters/editor/MarginText.h"
#include "letters/editor/RescueStrip.h"
#include "platform/automation/Conversion.h"

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>

#include <optional>

using namespace framework;
using namespace Qt::StringLiterals;

namespace letters {
namespace {

const FormCard card{
    .name = u"frmCartaModelo"_s, .lock = u"IDCartaModelo"_s, .errors = ErrorLetOut{}, .cancel = CancelAnswer::Nothing};

// The editor stores no margins above and below.
double MarginOf(const QVariant& value, double usual) {
  return automation::IsNull(value) ? usual : automation::CDbl(value);
}

/// Writes a new template letter or edits one. Every action but `Modificar` writes a new one.
class frmCartaModelo final : public FormOn<LetterWindow> {
 public:
  frmCartaModelo() : FormOn(card) {}

 private:
  void Connect() override {
    m_margins = {};
    m_name.clear();
    m_unreadable.clear();
    m_desk.emplace(ui);
    m_rescue.emplace(ui);
    On(ui.commands, &Commands::Triggered, [this](Command command) { Run(command); });
    On(ui.mnuCampos, &FieldMenu::MarkerChosen, [this](int marker, int velumarMarker) {
      const bool isOther = velumarMarker != 0 && objApi().velumar();
      ui.rtfCarta->TypeText(LoadResString(isOther ? velumarMarker : marker));
    });
    On(ui.cmdComprobar, &QPushButton::clicked, [this] { Run(Command::CheckMarkers); });
    On(ui.cmdRecuperar, &QPushButton::clicked, [this] { m_rescue->Take(); });
    On(ui.cmdDescartar, &QPushButton::clicked, [this] { m_rescue->Drop(); });
    On(ui.rtfCarta, &LetterEdit::PasteRefused,
       [this](const QString& reason) { Ask(u"No se ha podido pegar. %1"_s.arg(reason), vbExclamation); });
    On(ui.txtMargenIzdo, &QLineEdit::textChanged, [this] { OnMargin(*ui.txtMargenIzdo, &Margins::left); });
    On(ui.txtMargenDcho, &QLineEdit::textChanged, [this] { OnMargin(*ui.txtMargenDcho, &Margins::right); });
    for (QLineEdit* margin : {ui.txtMargenIzdo, ui.txtMargenDcho}) {
      OnEnter(margin, [margin] { margin->selectAll(); });
    }
    ConnectFontBoxes();
  }

  // An item that is shown already may be chosen, too: the selection may have other fonts.
  void ConnectFontBoxes() {
    const QLineEdit* size = ui.cboTamaño->lineEdit();
    OnChosen(ui.cboFuentes, [this] { m_desk->Format().ApplyFontName(); });
    On(ui.cboFuentes, &QComboBox::activated, [this] { m_desk->Format().ApplyFontName(); });
    On(ui.cboTamaño, &QComboBox::activated, [this] { m_desk->Format().ApplyFontSize(); });
    // What is typed counts when it is whole, what a program sets at once.
    On(ui.cboTamaño, &QComboBox::editTextChanged, [this, size] {
      if (!size->isModified()) {
        m_desk->Format().ApplyFontSize();
      }
    });
    On(size, &QLineEdit::editingFinished, [this] { ApplyTypedSize(); });
    // What is typed after Return is meant for the letter.
    On(size, &QLineEdit::returnPressed, [this] {
      m_desk->Format().ApplyFontSize();
      ui.rtfCarta->setFocus();
    });
  }

  void ApplyTypedSize() {
    if (ui.cboTamaño->lineEdit()->isModified()) {
      m_desk->Format().ApplyFontSize();
    }
  }

  // The load shows the editor's own font; from then on the bars show the caret's.
  void OnActivate() override { m_desk->Format().ShowSelection(); }

  void AskInstallation() override {
    const auto rs = Execute(u"SELECT Tipo FROM configuracion");
    const QVariant kind = rs->Field(0);
    ui.mnuCampos->ShapeNames(!automation::IsNull(kind) && automation::CLng(kind) == 1);
  }

  bool LoadRecord() override {
    ui.mnuCampos->ShapeInstallation(objApi().velumar());
    ui.rtfCarta->Start(QFont(u"Times New Roman"_s, 8));
    if (IsModify()) {
      LoadLetter();
    } else {
      SetCaption(LoadResString(3101));
    }
    const QSignalBlocker right(ui.txtMargenDcho);
    const QSignalBlocker left(ui.txtMargenIzdo);
    ui.txtMargenDcho->setText(MarginText(m_margins.right));
    ui.txtMargenIzdo->setText(MarginText(m_margins.left));
    m_desk->Format().FillFontBoxes();
    ui.picFondo->Place(m_margins);
    setWindowState(windowState() | Qt::WindowMaximized);
    if (ui.rtfCarta->IsForReading()) {
      ui.ServeReading();
      return true;
    }
    m_rescue->Offer(IsModify() ? Id() : 0);
    m_rescue->Watch(IsModify() ? Id() : 0, m_name);
    return true;
  }

  void LoadLetter() {
    LockRecord({ui.commands->Item(Command::Save), ui.commands->Button(Command::Save)});
    const auto rs = Execute(u"SELECT * FROM CartasModelo WHERE IDCartaModelo={}", Id());
    m_margins.right = MarginOf(rs->Field(u"MargenDerecho"), m_margins.right);
    m_margins.left = MarginOf(rs->Field(u"MargenIzquierdo"), m_margins.left);
    m_margins.top = MarginOf(rs->Field(u"MargenSuperior"), m_margins.top);
    m_margins.bottom = MarginOf(rs->Field(u"MargenInferior"), m_margins.bottom);
    const rtf::Report report = ui.rtfCarta->Load(Text(rs->Field(u"Contenido")));
    if (report.outcome == rtf::Outcome::Refused) {
      m_unreadable = report.reason;
    }
    m_name = Text(rs->Field(u"Nombre"));
    SetCaption(LoadResString(3100) + m_name);
    rs->Close();
    if (!m_unreadable.isEmpty()) {
      Ask(u"La carta guardada no se puede mostrar. %1"_s.arg(m_unreadable), vbExclamation);
    } else if (ui.rtfCarta->IsForReading()) {
      Ask(u"La carta tiene un párrafo demasiado largo, o con demasiados cambios de formato, para editarlo. Se muestra "
          u"su "
          "texto sin formato, solo para leerlo; lo que está guardado no cambia."_s,
          vbExclamation);
    }
  }

  void Run(Command command) {
    // A key of a command may be pressed in its box.
    ApplyTypedSize();
    switch (command) {
      case Command::Save:
        AcceptAndClose();
        break;
      case Command::SaveAs:
        SaveAs();
        break;
      case Command::Exit:
        RequestUnload(FormControlMenu);
        break;
      case Command::Help: {
        QKeyEvent key(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
        QCoreApplication::sendEvent(this, &key);
        break;
      }
      case Command::Justify:
        // A letter may go on where its numbers of characters end.
        Trap(u"tlbFormato_ButtonClick"_s, [this] { m_desk->Run(Command::Justify); });
        break;
      case Command::Print:
        LetterOutput(ui).Print(m_margins, windowTitle());
        break;
      case Command::Preview:
        LetterOutput(ui).Preview(m_margins, LetterName());
        break;
      case Command::SavePdf:
        LetterOutput(ui).SavePdf(m_margins, LetterName());
        break;
      default:
        m_desk->Run(command);
        break;
    }
  }

  QString LetterName() const { return m_name.isEmpty() ? u"Carta"_s : m_name; }

  void OnMargin(const QLineEdit& box, double Margins::*side) {
    const std::optional<double> margin = ReadMargin(box.text());
    if (!margin) {
      Ask(3141, vbInformation);
      return;
    }
    m_margins.*side = *margin;
    if (side == &Margins::left) {
      ui.picFondo->SetLeftMargin(m_margins);
    } else {
      ui.picFondo->SetRightMargin(m_margins);
    }
    ui.area->Arrange();
  }

  bool Validate() override {
    m_refused = !HasMargin(ui.txtMargenIzdo) || !HasMargin(ui.txtMargenDcho) || !MayReplaceUnreadable();
    if (m_refused) {
      return false;
    }
    if (IsModify()) {
      return true;
    }
    const std::optional<QString> name = AskName(3108);
    if (!name) {
      if (IsNuevo()) {
        objApi().IDAux(0);
      }
      m_rescue->GiveUp();
      Unload();
      return false;
    }
    m_name = *name;
    return true;
  }

  bool HasMargin(QLineEdit* box) { return StoredMargin(box->text()).has_value() || Refuse(box, 3141, vbInformation); }

  bool MayReplaceUnreadable() {
    return m_unreadable.isEmpty() ||
           Ask(u"La carta guardada no se pudo mostrar y se perderá. ¿Desea sustituirla por lo que ha escrito?"_s,
               vbYesNo + vbExclamation) == vbYes;
  }

  bool Write() override {
    const QString content = ui.rtfCarta->Content();
    const QString left = StoredMargin(ui.txtMargenIzdo->text()).value_or(QString());
    const QString right = StoredMargin(ui.txtMargenDcho->text()).value_or(QString());
    if (IsModify()) {
      m_refused = !m_rescue->Guard(Id(), m_name, [&] {
        Execute(
            u"UPDATE CartasModelo SET Contenido='{}', MargenIzquierdo='{}', MargenDerecho='{}' WHERE IDCartaModelo={}",
            content, left, right, Id());
      });
      if (m_refused) {
        return false;
      }
      Execute(u"DELETE FROM BloqueoRegistros WHERE codUsuario={} AND campoID='IDCartaModelo' AND ValorID={}",
              objApi().IDUsuario(), Id());
      return true;
    }
    m_refused = !m_rescue->Guard(0, m_name, [&] {
      Execute(
          u"INSERT INTO CartasModelo (Nombre, Contenido, MargenIzquierdo, MargenDerecho) VALUES ('{}','{}','{}','{}')",
          m_name, content, left, right);
    });
    if (m_refused) {
      return false;
    }
    if (IsNuevo()) {
      HandBackNewest();
    }
    return true;
  }

  // Intended: the margins as they were typed, and the other order of columns.
  void SaveAs() {
    const std::optional<QString> name = AskName(3112);
    if (!name) {
      return;
    }
    m_refused = !m_rescue->Guard(0, *name, [&] {
      Execute(
          u"INSERT INTO CartasModelo (Nombre, Contenido, MargenDerecho, MargenIzquierdo) VALUES ('{}','{}','{}','{}')",
          *name, ui.rtfCarta->Content(), ui.txtMargenDcho->text(), ui.txtMargenIzdo->text());
    });
    if (m_refused) {
      return;
    }
    HandBackNewest();
    Unload();
  }

  void HandBackNewest() {
    const QVariant newest = LookUp(u"maximo", u"SELECT MAX(IDCartaModelo) AS maximo FROM CartasModelo ");
    HandBack(automation::IsNumeric(newest) ? automation::CLng(newest) : 0);
  }

  void OnQueryUnload(bool& cancel, UnloadMode mode) override {
    if (HasLoadFailed() || mode == FormCode) {
      return;
    }
    if (mode != FormControlMenu) {
      // The session ends, or the program: nobody is there to be asked.
      cancel = !m_rescue->KeepChanged(IsModify() ? Id() : 0, m_name);
      return;
    }
    if (Ask(LoadResString(3113) + u"\r\n"_s + LoadResString(3114), vbYesNo + vbInformation) == vbYes) {
      m_refused = false;
      SaveOnExit();
      cancel = m_refused;
      return;
    }
    m_rescue->GiveUp();
    if (IsNuevo()) {
      objApi().IDAux(0);
    }
  }

  // Another user's record isn't overwritten: what was typed becomes a letter of its own.
  void SaveOnExit() {
    if (ui.commands->Item(Command::Save)->isEnabled()) {
      AcceptAndClose();
    } else {
      SaveAs();
    }
  }

  // Escape is no way out of a text: it would ask a question that ends the editor whatever is answered.
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() != Qt::Key_Escape) {
      FormOn::keyPressEvent(event);
    }
  }

  std::optional<LetterDesk> m_desk;
  std::optional<RescueStrip> m_rescue;
  Margins m_margins;
  QString m_name;
  /// Why the stored letter could not be shown; empty where it is.
  QString m_unreadable;
  /// Saving was asked for and did not come about, with the user told why.
  bool m_refused = false;
};

}  // namespace

std::unique_ptr<MaintenanceForm> CreateFrmCartaModelo() {
  return std::make_unique<frmCartaModelo>();
}

}  // namespace letters
