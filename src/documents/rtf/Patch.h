#pragma once

#include "documents/rtf/Parts.h"
#include "documents/rtf/Seams.h"

#include <QByteArray>

#include <optional>

namespace rtf {

/// A document that was changed since it was read from `original`: those bytes, with what was typed within runs at its
/// place, and the parts from the first that changed otherwise to the last one written anew. None where the bytes around
/// them can't be kept. `read` is what was read, `now` what the document holds.
std::optional<QByteArray> Patched(const QTextDocument& document, const QByteArray& original, const QList<Part>& read,
                                  const QList<Part>& now, const Seams& seams);

}  // namespace rtf
