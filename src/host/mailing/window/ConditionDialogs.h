#pragma once

#include "host/mailing/pieces/Choices.h"

#include <QDate>

#include <optional>
#include <utility>

class QWidget;

namespace host {

/// Lets the user tick records; nothing for a cancel. `title` is what they are called.
std::optional<QList<int>> AskForRecords(QWidget* parent, const QString& title, const QList<Choice>& records,
                                        const QList<int>& ticked);

/// Lets the user choose a first and a last day, each of which may be left open (invalid); nothing for a cancel.
std::optional<std::pair<QDate, QDate>> AskForDates(QWidget* parent, const std::pair<QDate, QDate>& dates);

}  // namespace host
