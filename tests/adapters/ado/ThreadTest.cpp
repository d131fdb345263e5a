#include "adapters/ado/AdoOverEmbedded.h"
#include "adapters/ado/Connection.h"

#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace z7::cashflow::test {
namespace {

/// COM on a thread of a test.
class OwnApartment {
public:
    OwnApartment() : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
    OwnApartment(const OwnApartment&) = delete;
    OwnApartment& operator=(const OwnApartment&) = delete;
    ~OwnApartment() {
        if (SUCCEEDED(result_)) {
            CoUninitialize();
        }
    }

private:
    HRESULT result_;
};

/// Answers calls from other apartments until a thread has ended.
void serveUntilEnd(std::thread& thread) {
    HANDLE handle = thread.native_handle() == 0 ? nullptr : pthread_gethandle(thread.native_handle());
    while (MsgWaitForMultipleObjects(1, &handle, FALSE, INFINITE, QS_ALLINPUT) == WAIT_OBJECT_0 + 1) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
            DispatchMessageW(&message);
        }
    }
    thread.join();
}

TEST(ThreadTest, TwoApartmentsHaveTheirOwnObjects) {
    std::vector<std::string> results(2);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < results.size(); ++i) {
        threads.emplace_back([&results, i] {
            const OwnApartment apartment;
            try {
                AdoOverEmbedded database;
                ado::Connection connection;
                connection.Open(database.connectionString(std::int16_t{2013}, 0));
                const std::string code = std::to_string(i);
                connection.Execute("insert into fitemss98 (citemcode) values(N'" + code + "')");
                const auto records = connection.Execute("select citemcode from fitemss98");
                results[i] = *records->Fields().Item(0).get<std::string>() + std::to_string(records->RecordCount());
            } catch (const Error& error) {
                results[i] = error.description();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(results, (std::vector<std::string>{"01", "11"}));
}

TEST(ThreadTest, AConnectionOfAnotherApartmentIsUsedThroughItsProxy) {
    AdoOverEmbedded database;
    const ComPtr<IDispatch> host = database.openHostConnection();
    ComPtr<IStream> stream;
    ASSERT_EQ(CoMarshalInterThreadInterfaceInStream(IID_IDispatch, host.get(), stream.put()), S_OK);
    std::string result;
    std::thread user([&result, raw = stream.detach()] {
        const OwnApartment apartment;
        ComPtr<IDispatch> proxy;
        if (FAILED(CoGetInterfaceAndReleaseStream(raw, IID_IDispatch, proxy.putVoid()))) {
            result = "the connection cannot be passed to another apartment";
            return;
        }
        try {
            ado::Connection connection{Dispatch(proxy)};
            connection.Execute("insert into fitemss98 (citemcode,citemname) values(N'0101',N'现金')");
            const auto records = connection.Execute("select citemname from fitemss98");
            result = *records->Fields().Item("citemname").get<std::string>();
            try {
                connection.Execute("delete");
            } catch (const Error& error) {
                result += std::to_string(error.number());
            }
        } catch (const Error& error) {
            result = error.description();
        }
    });
    serveUntilEnd(user);
    EXPECT_EQ(result, "现金102");
}

} // namespace
} // namespace z7::cashflow::test
