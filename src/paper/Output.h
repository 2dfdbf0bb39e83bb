#pragma once

#include <QString>

class QPrinter;

namespace paper {

class Pages;

/// Prints all pages, without margins of the printer's own. Stops where the printer refuses another page.
void Print(const Pages& pages, QPrinter& printer);

/// Writes a PDF, whole or not at all. Returns why it could not, for the user; empty when it did.
QString SavePdf(const Pages& pages, const QString& file, const QString& title);

}  // namespace paper
