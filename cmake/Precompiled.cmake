# Each precompiled header is a library with no other content, shared by libraries and tests of one kind. They
# are compiled with the settings of the whole project; folders and definitions that a user adds come in
# addition and must not conflict. A file still includes everything that it uses.
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/Precompiled.cpp CONTENT "")
find_package(GTest REQUIRED)
find_package(Qt6 6.4 REQUIRED COMPONENTS Core)

# morvex_precompiled(NAME [LIBRARIES libraries...] [HEADERS headers...]): adds these to the headers that all
# of them contain.
function(morvex_precompiled name)
  cmake_parse_arguments(PARSE_ARGV 1 own "" "" "LIBRARIES;HEADERS")
  add_library(${name} STATIC ${CMAKE_BINARY_DIR}/Precompiled.cpp)
  target_link_libraries(${name} PRIVATE Boost::json Threads::Threads ${own_LIBRARIES})
  target_precompile_headers(
    ${name} PRIVATE <algorithm> <array> <chrono> <coroutine> <deque> <expected> <filesystem> <functional> <map> <memory>
    <mutex> <optional> <set> <span> <stop_token> <string> <string_view> <tuple> <unordered_map> <utility> <variant> <vector>
    <boost/json.hpp> ${own_HEADERS})
endfunction()

morvex_precompiled(precompiled)
set(network_headers <boost/asio.hpp> <boost/asio/ssl.hpp> <boost/beast.hpp>)
morvex_precompiled(precompiled-network LIBRARIES OpenSSL::SSL HEADERS ${network_headers})
morvex_precompiled(precompiled-qt LIBRARIES Qt6::Core HEADERS <QList> <QObject> <QPointer> <QProperty> <QString> <QVariant>)
set(test_headers <gtest/gtest.h> <gmock/gmock.h>)
morvex_precompiled(precompiled-tests LIBRARIES GTest::gtest GTest::gmock HEADERS ${test_headers})
morvex_precompiled(precompiled-network-tests LIBRARIES GTest::gtest GTest::gmock OpenSSL::SSL
                   HEADERS ${test_headers} ${network_headers})
morvex_precompiled(precompiled-harness LIBRARIES GTest::gtest GTest::gmock Qt6::Core Boost::url OpenSSL::Crypto
                   HEADERS ${test_headers} tests/support/CompanionHarness.h)
