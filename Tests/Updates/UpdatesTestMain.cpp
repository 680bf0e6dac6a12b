#include <QCoreApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char* argv[]) {
    testing::InitGoogleTest(&argc, argv);
    // None of the user's files and settings, whoever starts this.
    const QTemporaryDir home;
    for (const auto* variable :
         {"HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"}) {
        qputenv(variable, home.path().toLocal8Bit());
    }
    for (const auto* variable : {"http_proxy", "https_proxy", "all_proxy", "HTTP_PROXY", "HTTPS_PROXY",
                                 "ALL_PROXY", "LANG", "LC_ALL", "LANGUAGE", "GNUPGHOME"}) {
        qunsetenv(variable);
    }
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
