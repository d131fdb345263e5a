#pragma once

#include "z7cashflow/ports/Recordset.h"

#include <memory>
#include <string>

namespace z7::cashflow {

/// Serves a ServerRefClient: describes a reference and provides its rows. sRefID names the reference in any letter
/// case. Arguments that carry nothing for a provider are passed empty.
class ReferenceProvider {
public:
    virtual ~ReferenceProvider() = default;

    /// MetaXML becomes the document that describes the reference: a Ref element with its title (cRefName) and in
    /// RefColSet a ColSet for each column, with field (cFld), whether it shows (bDisp), title (cCaption), width in
    /// twips (iColWidth) and alignment (iAlign). It stays as it came for an unknown sRefID.
    virtual void GetSrvRefMeta(const std::string& sRefID, const std::string& sXML, std::string& MetaXML,
                               std::string& sMsg, bool& bFlag) = 0;
    /// RstGrid becomes a recordset without a connection that holds the rows, in columns of the names that the document
    /// has; the caller owns it. sXML may hold a filter, in the element filtersql below its root. bFlag becomes true.
    /// Where the rows cannot be had, sMsg says why and RstGrid stays as it came.
    virtual void GetSrvData(const std::string& sRefID, const std::string& sXML, const std::string& EleMeta,
                            std::shared_ptr<Recordset>& RstClass, std::shared_ptr<Recordset>& RstGrid,
                            std::shared_ptr<Recordset>& RstColSet, std::string& sMsg, bool& bFlag) = 0;
};

} // namespace z7::cashflow
