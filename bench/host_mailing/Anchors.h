#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace bench {

/// Processor seconds and the peak of memory of a process and those that it waited for.
struct Cost {
  double seconds = 0;
  double megabytes = 0;
};

/// Runs a program to its end; ends this one where it fails.
Cost CostOf(const QStringList& command);

/// What other programs need for as many people, measured in `folder`; nothing, and said so, where one is not installed.

/// The labels of a sheet of 3 x 8.
std::optional<Cost> LabelsElsewhere(const QString& folder, int people);
/// `letter` is RTF with fields in brackets.
std::optional<Cost> LettersElsewhere(const QString& folder, const QByteArray& letter, int people);

}  // namespace bench
