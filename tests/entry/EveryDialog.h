#pragma once

#include "entry/Dispatch.h"
#include "support/Expect.h"

#include <QMessageBox>
#include <QPushButton>
#include <QSet>

#include <algorithm>

/// Every dialog that a host can ask for, by data of a test: columns "node" and "id", the dialog's name as the row's.
inline void AddEveryDialog() {
  QTest::addColumn<int>("node");
  QTest::addColumn<int>("id");
  QSet<QString> known;
  for (const entry::dispatch::Entry& entry : entry::dispatch::Table()) {
    if (entry.create != nullptr && !known.contains(entry.dialog)) {
      known.insert(entry.dialog);
      QTest::newRow(qPrintable(entry.dialog))
          << entry.node.toInt() << (entry.opening == entry::dispatch::Opening::GuardedLoadOfARecord ? 1 : 0);
    }
  }
}

/// Opens the dialog of the row, runs `look` and closes it; `look` has run when the outcome is clean.
template <typename Look>
std::optional<automation::Error> OpenEach(support::TestHost& host, int node, int id, Look look) {
  host.Execute(u"INSERT INTO Bancos(IDBanco,Numero,Nombre) VALUES(1,'0001','Uno')");
  host.desktop.printers = 1;
  const bool isEditor = node == support::node.CartasModelo();
  if (isEditor) {
    // It always asks before it closes.
    host.driver.Answer(QMessageBox::No);
  }
  host.driver.On(QTest::currentDataTag(), [&](const support::DialogUser& dialog) {
    look(dialog);
    const QList<QPushButton*> buttons = dialog.Dialog()->findChildren<QPushButton*>();
    const auto cancel = std::find_if(buttons.cbegin(), buttons.cend(),
                                     [](QPushButton* button) { return button->property("SirveEnConsulta").toBool(); });
    if (isEditor || cancel == buttons.cend()) {
      dialog.Close();
    } else {
      // Where the focus alone suggested a value, closing would ask.
      (*cancel)->click();
    }
  });
  return host.PasarDatos(node, id == 0 ? support::action.Agregar() : support::action.Modificar(), id, 1);
}
