#include "drawing/NameMeanings.h"

#include <string>
#include <unordered_map>

namespace orxdrawing {

namespace {

struct Meaning {
  NameMeaning meaning;
  std::string_view names;  // separated by single spaces
};

constexpr Meaning kMeanings[] = {
    {NameMeaning::Text,
     "show ashow widthshow awidthshow kshow xshow yshow xyshow glyphshow cshow charpath"},
    {NameMeaning::Paint, "rectfill rectstroke ufill ueofill ustroke shfill execform erasepage"},
    {NameMeaning::Image, "imagemask"},
    {NameMeaning::Path, "arct arcto rcurveto strokepath uappend ustrokepath"},
    {NameMeaning::Clip, "clip eoclip"},
    {NameMeaning::InitClip, "initclip"},
    {NameMeaning::Color, "setcmykcolor sethsbcolor setcolor setpattern"},
    {NameMeaning::Dash, "setdash"},
    {NameMeaning::Matrix, "initmatrix initgraphics"},
    {NameMeaning::Save, "save"},
    {NameMeaning::Restore, "restore grestoreall"},
    {NameMeaning::Loop, "for repeat loop stopped pathforall"},
    {NameMeaning::Value,
     "ge gt le ne and or not xor bitshift cvr cvn cvx "
     "known store search anchorsearch token getinterval putinterval string count clear "
     "invertmatrix concatmatrix identmatrix defaultmatrix pathbbox "
     "clippath currentgray currentrgbcolor currentcmykcolor currenthsbcolor currentdash "
     "currentlinecap currentlinejoin type xcheck rand cvs maxlength run "
     "packedarray readstring readhexstring readline read exit"},
    {NameMeaning::Number, "sqrt sin cos atan exp ln log"},
    {NameMeaning::Rounding, "truncate cvi"},
    {NameMeaning::Device, "dtransform idtransform"},
    {NameMeaning::Bookkeeping,
     "showpage copypage stringwidth findfont scalefont makefont setfont selectfont definefont "
     "undefinefont "
     "composefont rootfont currentfont FontDirectory StandardEncoding ISOLatin1Encoding "
     "findencoding "
     "setcachedevice setcachedevice2 setcharwidth setcachelimit cachestatus setcacheparams "
     "readonly executeonly noaccess rcheck wcheck setpacking currentpacking setglobal "
     "currentglobal gcheck setcolorspace currentcolorspace currentcolor setscreen currentscreen "
     "sethalftone currenthalftone settransfer currenttransfer setcolortransfer setcolorscreen "
     "setblackgeneration setundercolorremoval setrenderingintent setcolorrendering "
     "currentcolorrendering setoverprint setstrokeadjust currentstrokeadjust setflat currentflat "
     "setbbox ucache flattenpath reversepath currentmiterlimit setsmoothness setgstate gstate "
     "languagelevel product version revision serialnumber vmstatus vmreclaim usertime realtime "
     "print flush flushfile = == stack pstack quit stop handleerror $error undef internaldict "
     "srand rrand prompt executive echo file closefile write writestring bytesavailable status "
     "setpageparams currentpagedevice nulldevice banddevice framedevice setuserparams "
     "currentuserparams setsystemparams setdevparams setvmthreshold startjob exitserver pdfmark "
     "letter legal a3 a4 a5 b5 note lettersmall manualfeed waittimeout jobname "
     "resourcestatus resourceforall findcolorrendering cvlit globaldict shareddict "
     "countdictstack dictstack cleardictstack countexecstack execstack dictfull noop"},
};

std::unordered_map<std::string_view, NameMeaning> MakeTable() {
  std::unordered_map<std::string_view, NameMeaning> table;
  for (const Meaning& row : kMeanings) {
    for (std::string_view rest = row.names; !rest.empty();) {
      const std::size_t end = rest.find(' ');
      table.emplace(rest.substr(0, end), row.meaning);
      rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    }
  }
  return table;
}

}  // namespace

NameMeaning MeaningOf(std::string_view name) noexcept {
  static const std::unordered_map<std::string_view, NameMeaning> table = MakeTable();
  const auto found = table.find(name);
  return found == table.end() ? NameMeaning::Unknown : found->second;
}

}  // namespace orxdrawing
