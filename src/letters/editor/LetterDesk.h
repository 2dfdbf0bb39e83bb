#pragma once

#include "letters/editor/FormatTools.h"

#include <QObject>

class QPoint;

namespace documents {
struct Margins;
}

namespace letters {

struct LetterWindow;

/// The work on a letter that needs neither its record nor the host's request: clipboard, formats, search, markers,
/// printing, the view. One for each window.
class LetterDesk : public QObject {
 public:
  explicit LetterDesk(LetterWindow& window);

  /// Does a command of its own; ignores others. Raises what FormatTools raises.
  void Run(Command command);
  FormatTools& Format() { return m_format; }
  /// Asks for the printer and prints. Errors of printing are not told; that is intended.
  void Print(const documents::Margins& margins, const QString& title);

 private:
  void ConnectLetter();
  void ToggleBar(Command command);
  void OpenMenu(const QPoint& at);
  void SetTabStops(bool letterHasFocus);
  void BuscarTexto();
  void FindAgain();
  void ShowFound(const QTextCursor& found);
  void CheckMarkers();
  void ShowZoom();

  LetterWindow& m_window;
  FormatTools m_format;
  QString m_lastSearch;
};

}  // namespace letters
