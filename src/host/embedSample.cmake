# Writes a source file that holds the texts of the sample company:
# cmake -DOUTPUT=file.cpp "-DTABLES=a.csv;b.csv" "-DDEFINITIONS=b.sql" "-DDOCUMENTS=c.xml" -P embedSample.cmake
set(arrays "")
foreach(kind TABLES DEFINITIONS DOCUMENTS)
  set(entries "")
  foreach(file IN LISTS ${kind})
    get_filename_component(name ${file} NAME_WE)
    string(MAKE_C_IDENTIFIER "${kind}_${name}" array)
    file(READ ${file} bytes HEX)
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${bytes}")
    string(APPEND arrays "constexpr char ${array}[] = {${bytes}};\n")
    string(APPEND entries "    SampleFile{\"${name}\", {${array}, sizeof(${array})}},\n")
  endforeach()
  string(APPEND arrays "constexpr std::array ${kind}{\n${entries}};\n")
endforeach()
file(WRITE ${OUTPUT} "#include \"host/account/sampleData.h\"

#include <array>

namespace z7::cashflow::host {

namespace {

${arrays}
} // namespace

std::span<const SampleFile> sampleFiles() noexcept { return TABLES; }

std::span<const SampleFile> sampleDefinitions() noexcept { return DEFINITIONS; }

std::span<const SampleFile> sampleDocuments() noexcept { return DOCUMENTS; }

} // namespace z7::cashflow::host
")
