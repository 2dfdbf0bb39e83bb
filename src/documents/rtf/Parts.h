#pragma once

#include <QList>

#include <array>

class QTextDocument;

namespace rtf {

/// A part of a document: a paragraph outside tables, or everything up to the next one.
struct Part {
  int first = 0;  ///< Numbers of its first and last block.
  int last = 0;
  /// The format of the first one, its number in the document.
  int format = 0;
  /// Over its text and the numbers of its formats, which name the same formats as long as the document lives.
  std::array<char, 16> digest = {};

  /// Whether they show the same, wherever.
  bool operator==(const Part& other) const { return digest == other.digest; }
};

QList<Part> PartsOf(const QTextDocument& document);

}  // namespace rtf
