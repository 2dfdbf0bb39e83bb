#pragma once

#include <QByteArray>
#include <QString>

constexpr int everybody = 10000;
constexpr int some = 1000;

/// RTF with a picture and eleven fields.
QByteArray UsualLetter();

/// Makes a database of invented people with that letter, another one with a scanned sheet of A4, a sheet of labels and
/// two selections: "todas", of everybody, and "algunas".
void FillWithPeople(const QString& connectionString);
