#include "documents/rtf/Keywords.h"

#include "documents/rtf/Styles.h"

#include <algorithm>
#include <unordered_map>
#include <utility>
#include <vector>

namespace rtf {

namespace {

// The control words by what is done with them. Source: Rich Text Format Specification 1.9.1, "Index of RTF Control
// Words"; `\pardirnatural`, `\partightenfactor`, `\cocoa...` and `\view...` are those of Apple's text system, `\lbr`
// and the border words as Word 2007 writes them. Words that none of these lists has are dropped and reported.

constexpr std::string_view carriedCharacterWords =
    "accnone accdot acccomma acccircle accunderdot animtext chbrdr chshdng charscalex chbghoriz chbgvert chbgfdiag "
    "chbgbdiag chbgcross chbgdcross chbgdkhoriz chbgdkvert chbgdkfdiag chbgdkbdiag chbgdkcross chbgdkdcross cs expnd "
    "expndtw embo impr outl shad kerning lang langfe langnp langfenp noproof cgrid fittext webhidden "
    "deleted revised revauth revdttm revauthdel revdttmdel crauth crdate mvf mvt mvauth mvdate";
constexpr std::string_view carriedCharacterColours = "chcfpat ulc";

constexpr std::string_view carriedParagraphWords =
    "s keep keepn sbauto saauto lisb lisa culi curi cufi adjustright indmirror contextualspace widctlpar nowidctlpar "
    "hyphpar noline nocwrap nowwrap nooverflow aspalpha aspnum faauto fahang facenter faroman favar fafixed "
    "nosnaplinegrid outlinelevel level subdocument sbys spv collapsed brdrt brdrb brdrl brdrr brdrbtw brdrbar box "
    "shading bghoriz bgvert bgfdiag bgbdiag bgcross bgdcross bgdkhoriz bgdkvert bgdkfdiag bgdkbdiag bgdkcross "
    "bgdkdcross absw absh phmrg phpg phcol posx posnegx posxc posxi posxo posxl posxr pvmrg pvpg pvpara posy posnegy "
    "posyt posyil posyb posyc posyin posyout abslock dxfrtext dfrmtxtx dfrmtxty overlay dropcapli dropcapt "
    "absnoovrlp wrapdefault wraparound wraptight wrapthrough frmtxlrtb frmtxtbrl frmtxbtlr frmtxlrtbv "
    "frmtxtbrlv qd qt qk pindtabqc pindtabql pindtabqr pmartabqc pmartabql pmartabqr ptabldot ptablmdot ptablminus "
    "ptablnone ptabluscore prauth prdate";
constexpr std::string_view carriedParagraphColours = "cbpat cfpat";

constexpr std::string_view rowWords =
    "cellx celld clmgf clmrg clvmgf clvmrg clbrdrt clbrdrb clbrdrl clbrdrr cldglu cldgll clvertalt clvertalc "
    "clvertalb cltxlrtb cltxtbrl cltxbtlr cltxlrtbv cltxtbrlv clshdng clshdngraw clshdrawnil clbghoriz clbgvert "
    "clbgfdiag clbgbdiag clbgcross clbgdcross clbgdkhor clbgdkvert clbgdkfdiag clbgdkbdiag clbgdkcross clbgdkdcross "
    "clpadt clpadl clpadb clpadr clpadft clpadfl clpadfb clpadfr clspt clspl clspb clspr clspft clspfl clspfb clspfr "
    "clFitText clNoWrap clftsWidth clwWidth clhidemark clins cldel trgaph trleft trrh trqc trql trqr trhdr trkeep "
    "trkeepfollow trautofit trbrdrt trbrdrb trbrdrl trbrdrr trbrdrh trbrdrv trwWidth trftsWidth trwWidthB "
    "trftsWidthB trwWidthA trftsWidthA trpaddt trpaddl trpaddb trpaddr trpaddft trpaddfl trpaddfb trpaddfr trspdt "
    "trspdl trspdb trspdr trspdft trspdfl trspdfb trspdfr trshdng trpat trbgbdiag trbgcross trbgdcross trbgdkbdiag "
    "trbgdkcross trbgdkdcross trbgdkfdiag trbgdkhor trbgdkvert trbgfdiag trbghoriz trbgvert tblind tblindtype tblrsid "
    "tbllkborder tbllkshading tbllkfont tbllkcolor tbllkbestfit tbllkhdrrows tbllklastrow tbllkhdrcols tbllklastcol "
    "tbllknorowband tbllknocolband lastrow ltrrow rtlrow rowd taprtl tdfrmtxtLeft tdfrmtxtRight "
    "tdfrmtxtTop tdfrmtxtBottom tabsnoovrlp tphcol tphmrg tphpg tposnegx tposnegy tposx tposxc tposxi tposxl tposxo "
    "tposxr tposy tposyb tposyc tposyil tposyin tposyout tposyt tpvmrg tpvpara tpvpg trauth trdate trcbpatraw";
constexpr std::string_view rowColours = "clcbpat clcfpat clcbpatraw clcfpatraw trcbpat trcfpat";

constexpr std::string_view borderWords =
    "brdrs brdrth brdrsh brdrdb brdrdot brdrdash brdrhair brdrdashsm brdrdashd brdrdashdd brdrdashdot brdrdashdotdot "
    "brdrinset brdrnone brdrnil brdrtbl brdroutset brdrtriple brdrtnthsg brdrthtnsg brdrtnthtnsg brdrtnthmg "
    "brdrthtnmg brdrtnthtnmg brdrtnthlg brdrthtnlg brdrtnthtnlg brdrwavy brdrwavydb brdrdashdotstr brdremboss "
    "brdrengrave brdrframe brdrw brsp brdrart";
constexpr std::string_view borderColours = "brdrcf";

constexpr std::string_view sectionWords =
    "endnhere binfsxn binsxn ds pnseclvl sectunlocked cols colsx colno colsr colw linebetcol sbknone sbkcol sbkpage "
    "sbkeven sbkodd linemod linex linestarts linerestart lineppage linecont pgwsxn pghsxn marglsxn margrsxn margtsxn "
    "margbsxn guttersxn margmirsxn lndscpsxn titlepg headery footery pgnstarts pgncont pgnrestart pgnx pgny pgndec "
    "pgnucrm pgnlcrm pgnucltr pgnlcltr pgnbidia pgnbidib pgnchosung pgncnum pgndbnum pgndbnumd pgndbnumt pgndbnumk "
    "pgndecd pgngbnum pgnganada pgnhn pgnhnsh pgnhnsp pgnhnsc pgnhnsm pgnhnsn vertal vertalt vertalb vertalc vertalj "
    "ltrsect rtlsect stextflow sectexpand sectlinegrid sectdefaultcl sectspecifycl sectspecifyl sectspecifygen "
    "sftnbj sftntj sftnstart sftnrstpg sftnrestart sftnrstcont sftnnar sftnnalc sftnnauc sftnnrlc sftnnruc sftnnchi "
    "saftnstart saftnrestart saftnrstcont saftnnar saftnnalc saftnnauc saftnnrlc saftnnruc saftnnchi pgbrdrt pgbrdrb "
    "pgbrdrl pgbrdrr pgbrdropt pgbrdrhead pgbrdrfoot pgbrdrsnap";

constexpr std::string_view documentWords =
    "deflang deflangfe adeflang paperw paperh psz margl margr margt margb facingp gutter rtlgutter gutterprl "
    "margmirror "
    "landscape pgnstart widowctrl twoonone linestart hyphhotz hyphconsec hyphcaps hyphauto viewkind viewscale viewzk "
    "formprot formshade formdisp annotprot revprot readprot revisions revprop revbar fracwidth makebackup psover "
    "doctype ftnstart ftnbj ftntj enddoc endnotes ftnrstpg ftnrestart ftnrstcont ftnnar ftnnalc ftnnauc ftnnrlc "
    "ftnnruc ftnnchi aftnstart aenddoc aendnotes aftnbj aftntj aftnrestart aftnrstcont aftnnar aftnnalc aftnnauc "
    "aftnnrlc aftnnruc aftnnchi fet htmautsp noxlattoyen expshrtn noultrlspc dntblnsbdb nospaceforul nolead "
    "prcolbl swpbdr brdrsurhdr brdrsurftr wraptrsp sprsspbf sprsbsp sprslnsp sprstsp sprstsm otblrul truncex "
    "nobrkwrptbl "
    "useltbaln alntblind lytcalctblwd lyttblrtgr lnbrkrule notabind transmf msmcap nocolbal cvmme subfontbysize "
    "bdbfhdr jexpand jcompress horzdoc vertdoc dghspace dgvspace dghorigin dgvorigin dghshow dgvshow dgsnap dgmargin "
    "allprot ltrdoc rtldoc nolnhtadjtbl splytwnine ftnlytwnine oldas cts oldlinewrap ApplyBrkRules asianbrkrule "
    "snaptogridincell allowfieldendsel wrppunct dontadjustlineheightintable muser grfdocevents themelang themelangfe "
    "themelangcs ignoremixedcontent saveinvalidxml showxmlerrors validatexml donotembedsysfont donotembedlingdata "
    "relyonvml showplaceholdtext newtblstyruls trackmoves trackformatting nogrowautofit remdttm rempersonalinfo "
    "stylelock stylelockbackcomp autofmtoverride bookfold bookfoldrev bookfoldsheets utinl felnbrelev nocxsptable "
    "noindnmbrts notbrkcnstfrctbl notcvasp notvatxbx spltpgpar usenormstyforlist hwelev noafcnsttbl cachedcolbal "
    "krnprsnet stshfdbch stshfloch stshfhich stshfbi fbidis nouicompat private nofeaturethrottle ilfomacatclnup "
    "noqfpromote viewbksp viewnobound fromtext fromhtml urtf toplinepunct";

constexpr std::string_view inlineWords =
    "chpgn chdate chtime chdpl chdpa sectnum chftn chatn chftnsep chftnsepc column softcol";

// Repeat or support what other words say (widths of an indent in its other name, fonts of other scripts), are the trail
// of a word processor's sessions, or describe a list's item that the list says again.
constexpr std::string_view droppedWords =
    "lin rin af afs ab ai acaps acf adn aexpnd aoutl ascaps ashad astrike aul auld auldb aulnone aulw aup alang fcs "
    "loch hich dbch fbias adeff rsid insrsid charrsid pararsid sectrsid delrsid tblrsid styrsid rsidroot "
    "softline "
    "softpage softlheight version vern edmins nofpages nofwords nofchars nofcharsws htmlrtf cocoartf cocoasubrtf "
    "cocoascreenfonts cocoatextscaling cocoaplatform vieww viewh readonlyrecommended pardirnatural qnatural "
    "partightenfactor abinodiroverride listtag jclisttab pardeftab irow irowband";

constexpr std::string_view documentGroups =
    "stylesheet info revtbl filetbl rsidtbl pgptbl mmathPr themedata colorschememapping datastore latentstyles "
    "xmlnstbl "
    "userprops docvar template protusertbl ftnsep ftnsepc ftncn aftnsep aftnsepc aftncn background pgdsctbl "
    "expandedcolortbl pnseclvl defchp defpap writereservation writereservhash passwordhash xmlattrname nextfile "
    "fchars lchars docfmt mailmerge wgrffmtfilter aftnsepr oldcprops oldpprops oldtprops oldsprops";
constexpr std::string_view sectionGroups = "header headerl headerr headerf footer footerl footerr footerf";
constexpr std::string_view inlineGroups =
    "footnote annotation atnid atnauthor atntime atnicn atnref atndate atnparent atrfstart atrfend bkmkstart bkmkend "
    "xe tc tcn shp do shpgrp mmath moMath txe rxe formfield ffdata datafield fldtype moveto movefrom mvfmf "
    "mvtof xmlopen xmlclose factoidname objupdate";
// The text of list items for readers without lists, tables' for readers without tables, who wrote the file, the markup
// of a letter that was HTML before.
constexpr std::string_view droppedGroups =
    "pntext listtext nonesttables generator htmltag mhtmltag pntxta pntxtb fname falt panose fontemb fontfile blipuid "
    "bliptag picprop list listoverride listlevel fldinst objdata objclass objname tblstyle";

constexpr std::pair<std::string_view, int> characters[] = {
    {"tab", u'\t'},        {"emdash", 0x2014},  {"endash", 0x2013},  {"emspace", 0x2003}, {"enspace", 0x2002},
    {"qmspace", 0x2005},   {"bullet", 0x2022},  {"lquote", 0x2018},  {"rquote", 0x2019},  {"ldblquote", 0x201C},
    {"rdblquote", 0x201D}, {"ltrmark", 0x200E}, {"rtlmark", 0x200F}, {"zwj", 0x200D},     {"zwnj", 0x200C},
    {"zwbo", 0x200B},      {"zwnbo", 0x2060},
};

struct Entry {
  std::string_view name;
  Action action;
  int value = 0;
};

constexpr Entry entries[] = {
    {"plain", Action::Plain},
    {"f", Action::Font},
    {"fs", Action::FontSize},
    {"b", Action::Bold},
    {"i", Action::Italic},
    {"ulnone", Action::UnderlineNone},
    {"strike", Action::Strike, 1},
    {"striked", Action::Strike, 2},
    {"caps", Action::Caps},
    {"scaps", Action::SmallCaps},
    {"super", Action::Super},
    {"sub", Action::Sub},
    {"nosupersub", Action::NoSuperSub},
    {"up", Action::Raise},
    {"dn", Action::Lower},
    {"cf", Action::Colour},
    {"highlight", Action::Background, int(BackgroundKind::Highlight)},
    {"cb", Action::Background, int(BackgroundKind::Background)},
    {"chcbpat", Action::Background, int(BackgroundKind::Shading)},
    {"v", Action::Hidden},
    {"ltrch", Action::RunDirection, 0},
    {"rtlch", Action::RunDirection, 1},
    {"pard", Action::Pard},
    {"ql", Action::Align, int(Alignment::Left)},
    {"qc", Action::Align, int(Alignment::Centre)},
    {"qr", Action::Align, int(Alignment::Right)},
    {"qj", Action::Align, int(Alignment::Justify)},
    {"li", Action::LeftIndent},
    {"ri", Action::RightIndent},
    {"fi", Action::FirstIndent},
    {"sb", Action::SpaceBefore},
    {"sa", Action::SpaceAfter},
    {"sl", Action::LineSpacing},
    {"slmult", Action::LineMultiple},
    {"tx", Action::TabStop},
    {"tb", Action::BarTab},
    {"tqc", Action::TabKind, int(TabKind::Centre)},
    {"tqr", Action::TabKind, int(TabKind::Right)},
    {"tqdec", Action::TabKind, int(TabKind::Decimal)},
    {"tldot", Action::TabLeader, int(TabLeader::Dots)},
    {"tlmdot", Action::TabLeader, int(TabLeader::MiddleDots)},
    {"tlhyph", Action::TabLeader, int(TabLeader::Hyphens)},
    {"tlul", Action::TabLeader, int(TabLeader::Underline)},
    {"tlth", Action::TabLeader, int(TabLeader::Thick)},
    {"tleq", Action::TabLeader, int(TabLeader::Equals)},
    {"intbl", Action::InTable},
    {"itap", Action::TableLevel},
    {"pagebb", Action::PageBreakBefore},
    {"ltrpar", Action::Direction, 0},
    {"rtlpar", Action::Direction, 1},
    {"ls", Action::ListNumber},
    {"ilvl", Action::ListLevel},
    {"trowd", Action::RowDefaults},
    {"sectd", Action::SectionDefaults},
    {"ansi", Action::CharacterSet, 1252},
    {"mac", Action::CharacterSet, 10000},
    {"pc", Action::CharacterSet, 437},
    {"pca", Action::CharacterSet, 850},
    {"ansicpg", Action::CodePage},
    {"deff", Action::DefaultFont},
    {"deftab", Action::DefaultTab},
    {"u", Action::Unicode},
    {"uc", Action::UnicodeSkip},
    {"par", Action::Paragraph},
    {"line", Action::Line},
    {"lbr", Action::Line},
    {"page", Action::Page},
    {"sect", Action::Section},
    {"cell", Action::Cell},
    {"row", Action::Row},
    {"nestcell", Action::NestedCell},
    {"nestrow", Action::NestedRow},
    {"rtf", Action::Document},
    {"fonttbl", Action::FontTable},
    {"colortbl", Action::ColourTable},
    {"listtable", Action::ListTable},
    {"listoverridetable", Action::ListOverrides},
    {"pict", Action::Picture},
    {"shppict", Action::ShapePicture},
    {"nonshppict", Action::FallbackPicture},
    {"field", Action::Field},
    {"object", Action::Object},
    {"fldrslt", Action::Result},
    {"result", Action::Result},
    {"pn", Action::Numbering},
    {"upr", Action::Alternatives},
    {"ud", Action::UnicodeAlternative},
    {"nesttableprops", Action::NestedRowProperties},
};

class Table {
 public:
  Table() {
    for (const Entry& entry : entries) {
      Add(entry.name, entry.action, entry.value);
    }
    for (int kind = int(UnderlineKind::Single); kind <= int(UnderlineKind::DoubleWave); ++kind) {
      Add(WordOf(UnderlineKind(kind)), Action::Underline, kind);
    }
    for (const auto& [name, codePoint] : characters) {
      Add(name, Action::Character, codePoint);
    }
    AddAll(carriedCharacterWords, Action::CarryCharacter);
    AddAll(carriedCharacterColours, Action::CarryCharacter, true);
    AddAll(carriedParagraphWords, Action::CarryParagraph);
    AddAll(carriedParagraphColours, Action::CarryParagraph, true);
    AddAll(rowWords, Action::CarryRow);
    AddAll(rowColours, Action::CarryRow, true);
    AddAll(borderWords, Action::BorderAttribute);
    AddAll(borderColours, Action::BorderAttribute, true);
    AddAll(documentGroups, Action::DocumentGroup);
    AddAll(sectionGroups, Action::SectionGroup);
    AddAll(inlineGroups, Action::InlineGroup);
    AddAll(droppedGroups, Action::DroppedGroup);
    AddAll(sectionWords, Action::CarrySection);
    AddAll(documentWords, Action::CarryDocument);
    AddAll(inlineWords, Action::CarryInline);
    AddAll(droppedWords, Action::Dropped);
    m_byName.reserve(m_all.size());
    for (const Keyword& keyword : m_all) {
      m_byName.emplace(keyword.name, &keyword);
    }
  }

  const Keyword* Find(std::string_view name) const {
    const auto found = m_byName.find(name);
    return found == m_byName.end() ? nullptr : found->second;
  }
  const Keyword& At(std::uint16_t id) const { return m_all[id]; }

 private:
  void Add(std::string_view name, Action action, int value = 0, bool colour = false) {
    m_all.push_back({name, action, value, static_cast<std::uint16_t>(m_all.size()), colour});
  }
  void AddAll(std::string_view names, Action action, bool colour = false) {
    while (!names.empty()) {
      const std::size_t end = std::min(names.find(' '), names.size());
      Add(names.substr(0, end), action, 0, colour);
      names.remove_prefix(std::min(end + 1, names.size()));
    }
  }

  std::vector<Keyword> m_all;
  std::unordered_map<std::string_view, const Keyword*> m_byName;
};

const Table& Keywords() {
  static const Table table;
  return table;
}

}  // namespace

const Keyword* FindKeyword(std::string_view name) {
  return Keywords().Find(name);
}

const Keyword& KeywordOf(std::uint16_t id) {
  return Keywords().At(id);
}

bool IsDestination(Action action) {
  return action >= Action::Document;
}

}  // namespace rtf
