#include "z7cashflow/dialog/PickListServerRefClient.h"

#include "z7cashflow/dialog/pickRecord.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/XmlDocument.h"
#include "z7cashflow/support/conversions.h"

#include <utility>
#include <vector>

namespace z7::cashflow {

namespace {

struct Reference {
    std::string title;
    std::vector<PickField> fields;
};

Reference readReference(const std::string& document) {
    Reference reference;
    const auto parsed = XmlDocument::load(document);
    if (!parsed) {
        raisePlatformError(Reason::referenceNotXml);
    }
    const XmlNode root = parsed->documentElement();
    reference.title = root.attribute("cRefName").value_or("");
    for (const XmlNode& column : root.selectNodes("RefColSet/Z7ColSet/Data/ColSet")) {
        if (column.attribute("bDisp") == "1") {
            reference.fields.push_back({column.attribute("cFld").value_or(""),
                                        {column.attribute("cCaption").value_or(""),
                                         toInt32(column.attribute("iColWidth").value_or("")), false}});
        }
    }
    return reference;
}

} // namespace

PickListServerRefClient::PickListServerRefClient(std::unique_ptr<PickList> list) : list_(std::move(list)) {}

PickListServerRefClient::~PickListServerRefClient() = default;

bool PickListServerRefClient::ShowServerRef(std::shared_ptr<ReferenceProvider>& provider,
                                            std::shared_ptr<Recordset>& shown, std::shared_ptr<Recordset>& picked,
                                            std::string& errorText) {
    try {
        std::string document;
        std::string message;
        bool flag = false;
        provider->GetSrvRefMeta(RefName_, "", document, message, flag);
        const Reference reference = readReference(document);
        std::shared_ptr<Recordset> rows;
        std::shared_ptr<Recordset> columns;
        provider->GetSrvData(RefName_, "", document, shown, rows, columns, message, flag);
        if (!rows) {
            errorText = message;
            return false;
        }
        if (pickRecord(*list_, reference.title, reference.fields, *rows)) {
            picked = rows;
        } else {
            rows->Close();
        }
        return true;
    } catch (const Error& failure) {
        errorText = failure.description();
        return false;
    }
}

} // namespace z7::cashflow
