#include "adapters/ado/connectionSecrets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace z7::cashflow::ado {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(SecretsTest, PasswordsAreFoundWhateverTheirKeyword) {
    EXPECT_THAT(secretsOf("Provider=P;Password=one;User ID=u"), ElementsAre("one"));
    EXPECT_THAT(secretsOf("PWD = two ;x=y"), ElementsAre("two"));
    EXPECT_THAT(secretsOf("Access Token=three"), ElementsAre("three"));
    EXPECT_THAT(secretsOf("Provider=P;User ID=u;Password=;Data Source=s"), IsEmpty());
    EXPECT_THAT(secretsOf(""), IsEmpty());
}

TEST(SecretsTest, AValueInQuotesOrBracesIsFoundAsWrittenAndAsMeant) {
    EXPECT_THAT(secretsOf(R"(Password="a;b""c";User ID=u)"), ElementsAre(R"(a;b""c)", R"(a;b"c)"));
    EXPECT_THAT(secretsOf("Password='a;b';x=1"), ElementsAre("a;b", "a;b"));
    EXPECT_THAT(secretsOf("Pwd={a}}b;c};x=1"), ElementsAre("a}}b;c", "a}b;c"));
}

TEST(SecretsTest, ADamagedStringStillHidesWhatItCan) {
    EXPECT_THAT(secretsOf("Password=\"open;x=1"), Contains("\"open"));
    EXPECT_THAT(secretsOf("nothing;;Password=p;Password=q"), ElementsAre("p", "q"));
}

TEST(SecretsTest, EveryOccurrenceIsMasked) {
    EXPECT_EQ(withoutSecrets("p1 and p1, not q", {"p1"}), "*** and ***, not q");
    EXPECT_EQ(withoutSecrets("nothing", {}), "nothing");
}

} // namespace
} // namespace z7::cashflow::ado
