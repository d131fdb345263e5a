# Writes a source file that holds the text of CSV files: cmake -DOUTPUT=file.cpp "-DFILES=a.csv;b.csv" -P embedSample.cmake
set(arrays "")
set(entries "")
foreach(file IN LISTS FILES)
  get_filename_component(name ${file} NAME_WE)
  file(READ ${file} bytes HEX)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${bytes}")
  string(APPEND arrays "constexpr char ${name}[] = {${bytes}};\n")
  string(APPEND entries "    SampleFile{\"${name}\", {${name}, sizeof(${name})}},\n")
endforeach()
file(WRITE ${OUTPUT} "#include \"host/sampleData.h\"

#include <array>

namespace z7::cashflow::host {

namespace {

${arrays}
constexpr std::array files{
${entries}};

} // namespace

std::span<const SampleFile> sampleFiles() noexcept { return files; }

} // namespace z7::cashflow::host
")
