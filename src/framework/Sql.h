#pragma once

#include <QString>

/// A text as it goes between single quotes of a statement: trimmed, every single quote doubled.
QString TextoSql(const QString& text);
