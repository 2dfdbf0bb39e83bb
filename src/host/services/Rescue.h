#pragma once

#include "host/records/ComponentBridge.h"
#include "host/records/WriteWatch.h"
#include "host/services/KeptInput.h"

#include <QObject>
#include <QPointer>

#include <memory>
#include <optional>
#include <vector>

class QDialog;
class QMessageBox;

namespace host {

/// Keeps what a user typed into a dialog of the component that closed without saving it: after a Yes to its question
/// when something was missing, after an error, when the program is told to end, and when a dialog that never asks is
/// closed. A No and Cancel are a wish, and nothing is kept. It watches from outside: what controls held when the dialog
/// appeared and when it went, what was written meanwhile, how boxes were answered. The letter editor keeps its letter
/// itself.
class Rescue : public QObject {
  Q_OBJECT

 public:
  /// Watches the whole application while it lives. `services` is a `KelAPI.cPrincipal`; both outlive it.
  Rescue(const QObject& services, const ComponentBridge& bridge);
  ~Rescue() override;

  /// The newest first, at most ten, one for a dialog and record.
  const QList<KeptInput>& Inputs() const { return m_kept; }
  /// Takes over what an earlier run of the program kept.
  void Add(const QList<KeptInput>& inputs);
  void Discard(const KeptInput& input);

  /// From now on a No and Cancel are no wish of the user's: the program ends with nobody there.
  void KeepEverything() { m_keepsEverything = true; }

  /// When the dialog of that input appears next, and can be changed, its values are put into it, and it is kept no
  /// longer. What could not be put back is told.
  void PutBackInto(const KeptInput& input);
  /// No dialog came.
  void PutBackNothing() { m_wanted.reset(); }

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  /// Inputs() has changed.
  void Changed();
  void NotPutBack(const host::KeptInput& input, const QList<host::ControlValue>& values);

 private:
  enum class Answer { None, Yes, No };
  struct Watched {
    QPointer<QDialog> dialog;
    KeptInput input;
    QList<ControlValue> before;
    QStringList rowsBefore;
    std::unique_ptr<WriteWatch> writes;
    qsizetype nestedWrites = 0;  ///< Rows that dialogs opened by this one wrote.
    Answer answer = Answer::None;
    bool refused = false;       ///< A box was shown since the answer.
    bool cancelled = false;     ///< By its button, at this moment.
    bool accepted = false;      ///< By its button, and no box has been shown since.
    bool savesInOuter = false;  ///< Accepting it changes the dialog below, and nothing is written.
    QStringList acceptedRows;   ///< Of such a dialog above this one.
  };

  bool IsWatching() const;
  void Begin(QDialog& dialog);
  void WatchButtons(QDialog& dialog);
  void Mark(const QDialog& dialog, bool Watched::*mark, bool value);
  void End(QDialog& dialog);
  void Heard(const QMessageBox& box);
  /// How the dialog is asked for; none for one that only another dialog opens.
  std::optional<ComponentRequest> RequestOf(const QDialog& dialog, bool savesInOuter) const;
  void Close(Watched& watched);
  bool IsWorthKeeping(const Watched& watched) const;
  void Keep(const KeptInput& input);
  void PutBackNow(QDialog& dialog, const KeptInput& input);

  const QObject& m_services;
  const ComponentBridge& m_bridge;
  std::vector<std::unique_ptr<Watched>> m_open;  ///< The innermost last.
  QList<KeptInput> m_kept;
  std::optional<KeptInput> m_wanted;
  bool m_keepsEverything = false;
};

}  // namespace host
