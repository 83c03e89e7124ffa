// What --help says of the program and of each command, beside the options themselves.
//
// The manual page takes these texts, too, so a new command needs no other description of itself
// than one here, its options and its page in docs/.
#pragma once

namespace orxprint {

inline constexpr const char* kDescription =
    "Draws, describes and traces Encapsulated PostScript documents through the print\n"
    "interpreter plug-in.";

inline constexpr const char* kFooter =
    "Examples:\n"
    "  orxprint render part.eps -o part.pdf\n"
    "  orxprint render scan.eps -f png -r 300 --area drawing\n"
    "  orxprint render manual.eps -o 'page-%d.svg' --pages 1,3-5,7-\n"
    "  orxprint check *.eps\n"
    "  orxprint info *.eps --json\n"
    "  orxprint trace part.eps --page 2 --where\n"
    "  orxprint find part.eps --at 31.5,80mm\n"
    "  orxprint diff old.eps new.eps -o difference.svg\n"
    "  orxprint view part.eps\n"
    "  orxprint plugin --check\n"
    "  cat part.eps | orxprint render - -f pdf > part.pdf\n"
    "\n"
    "A FILE of - is standard input; an output of - is standard output.\n"
    "\n"
    "Exit status: 0 all went well; 1 a file could not be read or drawn (the others are\n"
    "done); 2 wrong usage; 3 content is missing or wrong (check, render --strict); 4 a limit was\n"
    "met (what was drawn is written); 5 the plug-in could not be loaded.";

inline constexpr const char* kRenderFooter =
    "The format follows OUT's ending unless -f is given; it is svg without either. Without -o the\n"
    "output stands beside the input under its name with the new ending; OUT may be a folder.\n"
    "PDF takes all pages in one file. Several pages of SVG or PNG are numbered, as in name-2.svg,\n"
    "or where OUT has %d or %03d. Output appears under its name only when it is complete.\n"
    "Several documents are drawn at once, each in a process of its own; on Windows one by one.\n"
    "\n"
    "Examples:\n"
    "  orxprint render part.eps -o part.pdf\n"
    "  orxprint render *.eps -f png -r 300 -o pictures/\n"
    "  orxprint render manual.eps -o 'page-%d.svg' --pages 1,3-5,7-\n"
    "  orxprint render *.eps -f png --fit 256x256 -o previews/\n"
    "  orxprint render -R drawings -f pdf -o pdf/ --newer --report drawn.jsonl";

inline constexpr const char* kCheckFooter =
    "Interprets and draws nothing. Prints one line for a document of which nothing is lost;\n"
    "otherwise what is lost or differs, the gravest first, with the lines of its PostScript\n"
    "section. docs/check.md lists every kind. Ends with 3 when content is missing or wrong.\n"
    "With --json: an array with an object for each file, as docs/check.schema.json says.\n"
    "\n"
    "Examples:\n"
    "  orxprint check *.eps\n"
    "  orxprint check -R drawings --html drawings.html";

inline constexpr const char* kInfoFooter =
    "Prints what the comments say, with the line of each box, what was drawn, and warnings by\n"
    "stable names. With --json: an array with an object for each file, in the order given, as\n"
    "docs/info.schema.json describes it; lengths have their unit in the name of their key. A file\n"
    "that is no PostScript has isPostScript false, and the status is 1.\n"
    "\n"
    "Examples:\n"
    "  orxprint info part.eps\n"
    "  orxprint info *.eps --json\n"
    "  orxprint info part.eps --quick";

inline constexpr const char* kTraceFooter =
    "Prints every call that the interpreter makes on its drawing device, one a line. Images are\n"
    "named by the size and CRC-32 of their samples. Of several files each begins with a line\n"
    "'# file NAME'. With --json every line is an object. docs/trace-format.md tells all of it.\n"
    "\n"
    "Examples:\n"
    "  orxprint trace part.eps --page 2 --where\n"
    "  orxprint trace scan.eps --samples";

inline constexpr const char* kViewFooter =
    "Makes a page with the interpreter and the documents inside, which any browser opens: the\n"
    "drawings, what is lost or differs, and the lines that draw it; see docs/viewer.md. Where the\n"
    "interpreter for browsers is not installed, the page carries drawings that are made now.\n"
    "Without -o it is a temporary file, which stays, and the desktop's browser opens it.\n"
    "\n"
    "Examples:\n"
    "  orxprint view part.eps\n"
    "  orxprint view *.eps -o drawings.html";

inline constexpr const char* kFindFooter =
    "Prints the strokes, fills and images whose ink touches the place, the topmost first, with\n"
    "the page and the line that drew each. Places count from the document's origin, y upwards, as\n"
    "in a trace; without mm or pt in the unit of --units. With --json: docs/find.md.\n"
    "\n"
    "Examples:\n"
    "  orxprint find part.eps --at 31.5,80mm\n"
    "  orxprint find part.eps --at 90,230pt --within 1";

inline constexpr const char* kPluginFooter =
    "Loads the plug-in, draws and asks with it, and prints a line for each check. Each runs in a\n"
    "process of its own and may take 60 seconds, or what --time-limit says. Exit status: 0 all\n"
    "hold; 1 one does not; 5 there is no such file.\n"
    "\n"
    "Examples:\n"
    "  orxprint plugin --check\n"
    "  orxprint plugin --check build/release/lib/ORXPrintEPSInterpreter.so --only load,stop";

inline constexpr const char* kDiffFooter =
    "Prints which strokes, fills and images were added (+), removed (-) or changed (!) from\n"
    "BEFORE to AFTER, page by page, with the lines that drew them. OUT shows what differs,\n"
    "BEFORE's in red and AFTER's in blue, over the rest in pale grey; nothing is written when\n"
    "nothing differs. Exit status: 0 both draw the same; 1 they differ; 2 trouble, wrong usage\n"
    "and limits included; 5 the plug-in could not be loaded.\n"
    "\n"
    "Examples:\n"
    "  orxprint diff old.eps new.eps\n"
    "  orxprint diff old.eps new.eps -o difference.svg --tolerance 0.01";

}  // namespace orxprint
