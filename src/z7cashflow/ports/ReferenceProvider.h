#pragma once

#include "z7cashflow/ports/Recordset.h"
#include "z7cashflow/support/visibility.h"

#include <memory>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// Describes a reference and provides its rows for a ServerRefClient. sRefID names the reference in any letter
/// case. Arguments without meaning for a provider are passed empty.
class ReferenceProvider {
public:
    virtual ~ReferenceProvider() = default;

    /// Sets MetaXML to the document that describes the reference: a Ref element with its title (cRefName) and
    /// in RefColSet a ColSet for each column, with field (cFld), visibility (bDisp), title (cCaption), width in
    /// twips (iColWidth) and alignment (iAlign). For an unknown sRefID it is unchanged.
    virtual void GetSrvRefMeta(const std::string& sRefID, const std::string& sXML, std::string& MetaXML,
                               std::string& sMsg, bool& bFlag) = 0;
    /// Sets RstGrid to a recordset without a connection that contains the rows, in columns with the names of
    /// the document; the caller owns it. sXML may contain a filter, in the element filtersql below its root.
    /// Sets bFlag to true. If the rows cannot be read, sMsg is set to the reason and RstGrid is unchanged.
    virtual void GetSrvData(const std::string& sRefID, const std::string& sXML, const std::string& EleMeta,
                            std::shared_ptr<Recordset>& RstClass, std::shared_ptr<Recordset>& RstGrid,
                            std::shared_ptr<Recordset>& RstColSet, std::string& sMsg, bool& bFlag) = 0;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
