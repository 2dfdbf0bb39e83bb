#pragma once

#include <QString>

constexpr int everybody = 10000;
constexpr int some = 1000;

/// Makes a database of invented people with a letter, a sheet of labels and two selections: "todas", of everybody, and
/// "algunas".
void FillWithPeople(const QString& connectionString);
