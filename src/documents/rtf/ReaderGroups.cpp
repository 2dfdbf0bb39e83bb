// Destinations, fields and objects, and the pieces that are carried.

#include "documents/rtf/Picture.h"
#include "documents/rtf/Reader.h"

#include <QTextImageFormat>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace rtf {

namespace {

// Longer numbering groups are not kept to the letter; what they say of the list is.
constexpr qsizetype longestNumbering = 4096;

std::string_view View(const QByteArray& bytes) {
  return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

/// Groups of the whole document; in the result of a field, which may be written back as it is, they stay where they
/// are.
bool IsTable(Action action) {
  return action == Action::FontTable || action == Action::ColourTable || action == Action::ListTable ||
         action == Action::ListOverrides || action == Action::DocumentGroup || action == Action::SectionGroup;
}

/// The address in a field's instruction `HYPERLINK "address" \l "place"`; empty for other fields. Backslashes are
/// doubled in it once for the field and once for RTF.
/// Source: ECMA-376, part 1, 17.16.5.25 (HYPERLINK).
QString HyperlinkTarget(std::string_view head, int codePage) {
  QString text;
  Tokenizer tokenizer(head);
  for (Token token = tokenizer.Next(); token.kind != TokenKind::End && text.size() < 4096; token = tokenizer.Next()) {
    if (token.kind == TokenKind::Text) {
      Decode(text, token.text, codePage);
    } else if (token.kind == TokenKind::Symbol && token.byte == '\\') {
      text += u'\\';
    } else if (token.kind == TokenKind::Hex) {
      Decode(text, {reinterpret_cast<const char*>(&token.byte), 1}, codePage);
    }
  }
  text = text.trimmed();
  if (!text.startsWith(u"HYPERLINK", Qt::CaseInsensitive)) {
    return {};
  }
  const qsizetype place = text.indexOf(u"\\l");
  const qsizetype open = text.indexOf(u'"');
  const qsizetype close = text.indexOf(u'"', open + 1);
  if (open < 0) {
    return text.mid(9).trimmed().section(u' ', 0, 0);
  }
  QString target = text.mid(open + 1, close - open - 1);
  target.replace(u"\\\\"_s, u"\\"_s);
  return place >= 0 && place < open ? u'#' + target : target;
}

}  // namespace

void Reader::EnterDestination(const Keyword& keyword, const Token& token) {
  switch (keyword.action) {
    case Action::Document:
      ChangeDocument(false);
      return;
    case Action::UnicodeAlternative:
    case Action::Result:
      return;
    case Action::Alternatives:
      Top().alternatives = m_uncounted == 0;
      return;
    case Action::NestedRowProperties:
      Top().nestedRowProperties = true;
      m_rows.ForgetNestedDefinition();
      return;
    case Action::Field:
    case Action::Object:
      if (m_uncounted == 0 && m_links[Top().character.link].depth <= deepestLink) {
        OpenLink(keyword.action == Action::Object);
        return;
      }
      break;
    default:
      break;
  }
  if (keyword.action == Action::DroppedGroup) {
    ++m_report.dropped[QString::fromLatin1(token.text.data(), static_cast<qsizetype>(token.text.size()))];
  }
  const QByteArray group = Capture();
  if (token.text == "pntext") {
    m_itemMark = group;
  }
  if (keyword.action == Action::Numbering) {
    CloseGroup();
    PlaceGroup(keyword, group);
  } else {
    PlaceGroup(keyword, group);
    CloseGroup();
  }
}

void Reader::EnterUnknownDestination(const Token& /*token*/) {
  static constexpr Keyword unknown{.name = "*", .action = Action::InlineGroup};
  static constexpr Keyword unknownOfDocument{.name = "*", .action = Action::DocumentGroup};
  PlaceGroup(m_bodyStarted ? unknown : unknownOfDocument, Capture());
  CloseGroup();
}

/// The group that is open at this point, from its destination word on, closed where the input does not close it.
QByteArray Reader::Capture() {
  const Tokenizer::Contents contents = m_tokenizer.SkipGroup();
  m_capturedEnd = contents.missing == 0 ? static_cast<qsizetype>(contents.end) + 1 : -1;
  const std::string_view bytes = m_input.substr(m_destination, contents.end - m_destination);
  QByteArray group;
  group.reserve(static_cast<qsizetype>(bytes.size() + contents.missing) + 2);
  group += '{';
  group.append(bytes.data(), static_cast<qsizetype>(bytes.size()));
  group.append(static_cast<qsizetype>(std::max<std::size_t>(contents.missing, 1)), '}');
  return group;
}

void Reader::PlaceGroup(const Keyword& keyword, const QByteArray& group) {
  if (IsTable(keyword.action) && IsWithinLink(keyword.action)) {
    AddPiece(group);
    return;
  }
  switch (keyword.action) {
    case Action::FontTable:
      BeginDocumentTable();
      m_seams.EndFontTable(m_capturedEnd);
      m_fonts.Add(View(group), m_preamble.codePage);
      m_preamble.fontTables += group;
      // The same number may be another font from here on.
      m_formats.clear();
      m_runIsCurrent = false;
      m_runStyle.reset();
      return;
    case Action::ColourTable:
      BeginDocumentTable();
      m_seams.EndColourTable(m_capturedEnd);
      m_colours.Add(View(group));
      m_preamble.colourTables += group;
      return;
    case Action::ListTable:
      BeginDocumentTable();
      m_lists.AddLists(View(group));
      m_preamble.listTables += group;
      return;
    case Action::ListOverrides:
      BeginDocumentTable();
      m_lists.AddOverrides(View(group));
      m_preamble.listTables += group;
      return;
    case Action::Numbering: {
      const Numbering numbering = ReadNumbering(View(group), m_preamble.codePage);
      if (numbering.kind != Numbering::Kind::None) {
        m_numberings.push_back(
            {numbering, QString::fromLatin1(group.size() <= longestNumbering ? group : NumberingGroup(numbering))});
        Top().paragraph.numbering = static_cast<int>(m_numberings.size()) - 1;
      }
      return;
    }
    case Action::DroppedGroup:
      return;
    default:
      break;
  }
  ++m_report.carried[QString::fromLatin1(keyword.name.data(), static_cast<qsizetype>(keyword.name.size()))];
  switch (keyword.action) {
    case Action::DocumentGroup:
      ChangeDocument(false);
      m_preamble.groups += group;
      break;
    case Action::SectionGroup:
      ChangeDocument(true);
      m_section.groups += group;
      break;
    case Action::Picture:
    case Action::ShapePicture:
      AddPicture(group);
      break;
    case Action::FallbackPicture:
      ExtendPicture(group);
      break;
    default:
      AddPiece(group);
      break;
  }
}

void Reader::BeginDocumentTable() {
  ChangeDocument(false);
  m_seams.BeginDocumentTable(static_cast<qsizetype>(m_destination));
}

void Reader::OpenLink(bool isObject) {
  const int parent = Top().character.link;
  m_links.push_back(
      {.parent = parent, .depth = m_links[parent].depth + 1, .isObject = isObject, .lastingWords = m_lastingWords});
  Top().openLink = static_cast<int>(m_links.size()) - 1;
  Top().contents = m_destination;
}

/// Enters the group that begins here if it is what counts in the group around it: a result, a Unicode alternative.
bool Reader::EnterResult() {
  const std::size_t begin = m_tokenizer.Position() - 1;
  Tokenizer ahead = m_tokenizer;
  Token token = ahead.Next();
  if (token.kind == TokenKind::Symbol && token.byte == '*') {
    token = ahead.Next();
  }
  const Keyword* keyword = token.kind == TokenKind::Word ? FindKeyword(token.text) : nullptr;
  const Action wanted = Top().alternatives ? Action::UnicodeAlternative : Action::Result;
  if (keyword == nullptr || keyword->action != wanted || m_groups.size() > deepestGroup) {
    return false;
  }
  m_tokenizer = ahead;
  Group inner = Top();
  inner.alternatives = false;
  inner.openLink = 0;
  if (wanted == Action::Result) {
    LinkNode& link = m_links[Top().openLink];
    if (link.head.IsNull()) {
      const std::string_view head = m_input.substr(Top().contents, begin - Top().contents);
      link.head = Piece(QByteArray(head.data(), static_cast<qsizetype>(head.size())));
      link.name = m_links[link.parent].name + link.head.Name();
      link.target = link.isObject ? QString() : HyperlinkTarget(head, m_preamble.codePage);
    }
    inner.character.link = Top().openLink;
    m_runIsCurrent = false;
  }
  inner.serial = ++m_groupSerials;
  m_groups.push_back(inner);
  return true;
}

/// A field or object of which nothing shows is a piece as a whole; without its result where that means more.
void Reader::CloseLink(const Group& group) {
  FlushHidden();
  const LinkNode& link = m_links[group.openLink];
  if (link.serial != 0) {
    return;
  }
  ++m_report.carried[link.isObject ? QStringLiteral("object") : QStringLiteral("field")];
  if (m_lastingWords != link.lastingWords) {
    AddPiece('{' + link.head.Bytes() + (link.isObject ? "{\\result}}" : "{\\fldrslt}}"));
    return;
  }
  Tokenizer whole(m_input.substr(group.contents));
  const Tokenizer::Contents contents = whole.SkipGroup();
  const std::string_view bytes = m_input.substr(group.contents, contents.end);
  QByteArray piece = '{' + QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size()));
  piece.append(static_cast<qsizetype>(std::max<std::size_t>(contents.missing, 1)), '}');
  AddPiece(piece);
}

Links Reader::LinksOf(int link) {
  if (link == 0) {
    return {};
  }
  Links links = LinksOf(m_links[link].parent);
  LinkNode& node = m_links[link];
  if (node.serial == 0) {
    node.serial = ++m_linkSerials;
  }
  links.append({node.serial, node.isObject, node.head, node.target});
  return links;
}

void Reader::AddPiece(const QByteArray& group) {
  FlushHidden();
  m_bodyStarted = true;
  QTextCharFormat format = FormatOf(Top().character);
  const Piece piece(group);
  format.setObjectType(pieceObjectType);
  format.setProperty(PieceNameProperty, piece.Name());
  format.setProperty(PieceProperty, QVariant::fromValue(piece));
  m_builder.AddObject(format);
  m_runIsCurrent = false;
  if (++m_pieceFormats > m_limits.formats) {
    Refuse(QStringLiteral("La carta tiene demasiados objetos."));
  }
}

void Reader::AddPicture(const QByteArray& group) {
  AddPiece(group);
  QTextCharFormat& format = *m_builder.LastObject();
  format.setObjectType(QTextFormat::ImageObject);
  format.setProperty(QTextFormat::ImageName, m_source.AddPicture(format.property(PieceProperty).value<Piece>()));
  if (const QSizeF size = PictureSize(group); !size.isEmpty()) {
    format.setProperty(QTextFormat::ImageWidth, size.width());
    format.setProperty(QTextFormat::ImageHeight, size.height());
  }
}

/// The same picture for readers that can't show the first: it goes where that one goes.
void Reader::ExtendPicture(const QByteArray& group) {
  FlushHidden();
  QTextCharFormat* last = m_builder.LastObject();
  const QByteArray first = last == nullptr ? QByteArray() : last->property(PieceProperty).value<Piece>().Bytes();
  if (!first.startsWith("{\\*\\shppict")) {
    AddPicture(group);
    return;
  }
  const Piece both(first + group);
  last->setProperty(PieceNameProperty, both.Name());
  last->setProperty(PieceProperty, QVariant::fromValue(both));
  last->setProperty(QTextFormat::ImageName, m_source.AddPicture(both));
}

}  // namespace rtf
