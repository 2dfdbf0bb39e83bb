#pragma once

class QTextBlock;
class QTextDocument;

namespace letters {

/// What a paragraph costs to lay out, which is done in one go: Qt takes time by the square of a word's length, of the
/// changes of format in it and of the marks over one letter.
struct ParagraphWeight {
  int characters = 0;
  int runs = 0;   ///< Stretches of one format.
  int word = 0;   ///< The longest stretch in which no line can end.
  int marks = 0;  ///< The most combining marks in a row.

  /// What the paragraph weighs that is made of both.
  ParagraphWeight operator+(const ParagraphWeight& other) const;
  /// Whether it is laid out in little time. Paragraphs of real letters weigh a tenth of the limits at most.
  bool IsLight() const;
};

ParagraphWeight WeightOf(const QTextBlock& paragraph);
/// Of each kind the most that a paragraph of the document has.
ParagraphWeight HeaviestOf(const QTextDocument& document);

}  // namespace letters
