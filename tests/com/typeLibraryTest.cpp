#include "com/ComTest.h"
#include "com/typeLibraryText.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace z7::test {
namespace {

// Hosts that are compiled depend on every line of the list. Only new interfaces may change it; Z7_RENEW_GOLDEN=1 renews
// it.
TEST_F(ComTest, TheTypeLibraryIsThatOfEarlierHosts) {
    ComPtr<ITypeLib> types;
    ASSERT_EQ(LoadTypeLibEx(LoadedLibrary::path().c_str(), REGKIND_NONE, types.put()), S_OK);
    const std::string text = typeLibraryText(*types);
    if (std::getenv("Z7_RENEW_GOLDEN") != nullptr) {
        std::ofstream(Z7_TYPE_LIBRARY_TEXT, std::ios::binary) << text;
    }
    std::ifstream file(Z7_TYPE_LIBRARY_TEXT, std::ios::binary);
    ASSERT_TRUE(file) << Z7_TYPE_LIBRARY_TEXT;
    std::stringstream expected;
    expected << file.rdbuf();
    EXPECT_EQ(text, expected.str());
}

} // namespace
} // namespace z7::test
