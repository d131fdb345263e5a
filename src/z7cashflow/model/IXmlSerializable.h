#pragma once

#include "z7cashflow/support/XmlDocument.h"
#include "z7cashflow/support/visibility.h"

#include <string>
#include <variant>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// What a Load takes: the text of a whole document for a collection, the element of a row for a row.
using XmlSource = std::variant<std::string, XmlNode>;

/// An object that can be written as XML and read back.
class IXmlSerializable {
public:
    virtual ~IXmlSerializable() = default;

    /// The content as XML in UTF-8: the document of a collection, the element of a row. Load reads it back, with
    /// numbers and dates as texts and the empty text as null.
    [[nodiscard]] virtual std::string Save() const = 0;
    /// Replaces the content with what the XML holds. Error 13 if the source is of the wrong kind.
    virtual void Load(const XmlSource& xml) = 0;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
