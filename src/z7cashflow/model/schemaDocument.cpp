#include "z7cashflow/model/schemaDocument.h"

#include <array>

namespace z7::cashflow {

namespace {

struct Declaration {
    const char* name;
    const char* type;
    const char* isnull;
    const char* defaultValue;
    const char* save;
    const char* beforeSave = " ";  ///< what comes between the default and the save flag
    const char* beforeClose = " "; ///< what comes between the save flag and the closing bracket
};

constexpr std::array<Declaration, 42> declarations{{
    {"key", "string", "false", "", "false"},
    {"RowGuid", "string", "true", "", "true"},
    {"iYear", "num", "false", "", "true"},
    {"iPeriod", "num", "false", "", "true"},
    {"iSignSeq", "num", "false", "", "true"},
    {"csign", "string", "false", "", "true"},
    {"iNo_id", "num", "false", "", "true"},
    {"inid", "num", "true", "", "true"},
    {"cCashItem", "string", "false", "", "true", "  "},
    {"cCashItemName", "string", "false", "", "false", "  ", ""},
    {"md", "num", "false", "0", "true"},
    {"mc", "num", "false", "0", "true"},
    {"ccode", "string", "false", "", "true"},
    {"ccode_name", "string", "true", "", "false"},
    {"md_f", "num", "false", "0", "true"},
    {"mc_f", "num", "false", "0", "true"},
    {"nd_s", "num", "false", "0", "true"},
    {"nc_s", "num", "false", "0", "true"},
    {"cdept_id", "string", "true", "", "true"},
    {"cperson_id", "string", "true", "", "true"},
    {"ccus_id", "string", "true", "", "true"},
    {"csup_id", "string", "true", "", "true"},
    {"citem_class", "string", "true", "", "true"},
    {"citem_id", "string", "true", "", "true"},
    {"ccashitem_id", "string", "true", "", "true"},
    {"cDefine1", "string", "true", "", "true"},
    {"cDefine2", "string", "true", "", "true"},
    {"cDefine3", "string", "true", "", "true"},
    {"cDefine4", "date", "true", "", "true"},
    {"cDefine5", "num", "true", "", "true"},
    {"cDefine6", "date", "true", "", "true"},
    {"cDefine7", "num", "true", "", "true"},
    {"cDefine8", "string", "true", "", "true"},
    {"cDefine9", "string", "true", "", "true"},
    {"cDefine10", "string", "true", "", "true"},
    {"cDefine11", "string", "true", "", "true"},
    {"cDefine12", "string", "true", "", "true"},
    {"cDefine13", "string", "true", "", "true"},
    {"cDefine14", "string", "true", "", "true"},
    {"cDefine15", "num", "true", "", "true"},
    {"dbill_date", "date", "true", "", "true"},
    {"cDefine16", "num", "true", "", "true"},
}};

std::string build() {
    constexpr const char* lineBreak = "\r\n";
    std::string text = "<struct>";
    text += lineBreak;
    for (const Declaration& field : declarations) {
        text += std::string("<item name='") + field.name + "' type='" + field.type + "' isnull='" + field.isnull +
                "' default='" + field.defaultValue + "'" + field.beforeSave + "save='" + field.save + "'" +
                field.beforeClose + "/>" + lineBreak;
    }
    return text + "</struct>" + lineBreak;
}

} // namespace

const std::string& schemaDocument() {
    static const std::string text = build();
    return text;
}

} // namespace z7::cashflow
