# Writes the scripts of the list SCRIPTS as texts into the source file OUTPUT; a script x/y.sql becomes scripts::y.
set(content "#include \"adapters/sqlite/scripts.h\"\n\nnamespace z7::cashflow::sqlite::scripts {\n")
foreach(script IN LISTS SCRIPTS)
  get_filename_component(name ${script} NAME_WE)
  file(READ ${script} text)
  string(APPEND content "\nconst char* const ${name} = R\"script(${text})script\";\n")
endforeach()
string(APPEND content "\n} // namespace z7::cashflow::sqlite::scripts\n")
file(WRITE ${OUTPUT} "${content}")
