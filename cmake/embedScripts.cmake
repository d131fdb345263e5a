# Writes the scripts of the list SCRIPTS as string constants to the source file OUTPUT; a script x/y.sql becomes scripts::y in the
# namespace z7::cashflow::ADAPTER, declared in adapters/ADAPTER/scripts.h.
set(content "#include \"adapters/${ADAPTER}/scripts.h\"\n\nnamespace z7::cashflow::${ADAPTER}::scripts {\n")
foreach(script IN LISTS SCRIPTS)
  get_filename_component(name ${script} NAME_WE)
  file(READ ${script} text)
  string(APPEND content "\nconst char* const ${name} = R\"script(${text})script\";\n")
endforeach()
string(APPEND content "\n} // namespace z7::cashflow::${ADAPTER}::scripts\n")
file(WRITE ${OUTPUT} "${content}")
