#pragma once

#include "letters/editor/FormatTools.h"
#include "letters/editor/PageCounter.h"

#include <QObject>

class QPoint;

namespace letters {

struct LetterWindow;

/// The work on a letter that needs neither its record nor the host's request: clipboard, formats, search, what is
/// inserted, the view. One for each window.
class LetterDesk : public QObject {
 public:
  explicit LetterDesk(LetterWindow& window);

  /// Does a command of its own; ignores others. Raises what FormatTools raises.
  void Run(Command command);
  FormatTools& Format() { return m_format; }

 private:
  void ConnectLetter();
  void ToggleBar(Command command);
  void OpenMenu(const QPoint& at);
  void SetTabStops(bool letterHasFocus);
  void BuscarTexto();
  void FindAgain();
  void ShowFound(const QTextCursor& found);
  void CheckMarkers();
  QString TextToReplace() const;
  void OpenFields();
  void InsertPicture();
  void ShowZoom();

  LetterWindow& m_window;
  FormatTools m_format;
  PageCounter m_counter;
  QString m_lastSearch;
};

}  // namespace letters
