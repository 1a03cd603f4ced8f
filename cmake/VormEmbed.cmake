# Writes the style and the script of the HTML report as a C++ source:
#
# cmake -D SOURCES=<folder> -D OUTPUT=<source> -P VormEmbed.cmake
#
# script_files.txt lists the files of the script in their order. They share one scope of their own.

file(READ ${SOURCES}/report.css style)
file(STRINGS ${SOURCES}/script_files.txt files)
set(script "\"use strict\";\n(() => {\n")
foreach(file IN LISTS files)
    file(READ ${SOURCES}/${file} text)
    string(APPEND script "${text}")
endforeach()
string(APPEND script "})();\n")

string(SHA256 styleHash "${style}")
string(SHA256 scriptHash "${script}")
file(WRITE ${OUTPUT} "#include <vorm/evaluation/report/html/page_parts.hpp>

namespace vorm::evaluation {

const PagePart reportStyle{R\"page(${style})page\", \"${styleHash}\"};
const PagePart reportScript{R\"page(${script})page\", \"${scriptHash}\"};

}  // namespace vorm::evaluation
")
