// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyAnsweringServer.h"
#include "KyQtTestFixture.h"

#include "KyNetworkConnection.h"
#include "KyNetworkConnectionObject.h"
#include "KyNetworkPasswordManager.h"

#include "KyHolder.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTimer>

namespace {

const QByteArray cHalf(5000, 'x');

class KyNetworkScriptTest : public KyQtTestFixture {
protected:
    void SetUp() override {
        KyQtTestFixture::SetUp();
        KyNetworkConnectionObject::initializeClass();
        KyNetworkConnection::get().setUseSystemProxy(false, false);
        KyNetworkConnection::get().setHttpProxy("", 80, "", "");
        KyQtLuaBinding::setDataPath(mDirectory.path().toStdString());
        engine().bindInstance(KyNetworkConnectionObject::get(), "network");
        expectRuns("log = '' local function tell(word) return function() log = log .. word end end "
                   "connect(network, 'stateChanged', tell '*') connect(network, 'proxyChanged', tell 'p') "
                   "connect(network, 'downloadFinished', function(path, error) log = log .. "
                   "(error == '' and path:match('[^/]*$') or error) .. '|' end)");
        engine().setLuaVariable("good", KyField(mGood.getUrl().toStdString()));
        engine().setLuaVariable("slow", KyField(mSlow.getUrl().toStdString() + "dir/slow.bin"));
    }
    void TearDown() override {
        KyQtTestFixture::TearDown();
        KyNetworkConnectionObject::finalizeClass();
        KyNetworkConnection::get().setHttpProxy("", 80, "", "");
        KyNetworkConnection::get().setNoProxyAddress("localhost");
    }

    /// Runs the event loop until the expression is true.
    static void waitFor(const std::string& expression) {
        constexpr int cPatience = 10000;
        QElapsedTimer timer;
        timer.start();
        while (eval(expression) != "true" && timer.elapsed() < cPatience)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        expectTexts({{expression, "true"}});
    }
    /// As the expression is looked at from below the download, that one is still on the stack.
    void whenHalfIsThere(const std::function<void()>& act) {
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            if (eval("network.Received == 5000") != "true")
                return;
            timer.stop();
            act();
        });
        timer.start(5);
        waitFor("not network.Downloading");
    }
    QByteArray read(const QString& name) const {
        QFile file(mDirectory.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }

    KyAnsweringServer mGood{KyAnsweringServer::makeHead("200 OK", 5000) + cHalf};
    KyAnsweringServer mSlow{KyAnsweringServer::makeHead("200 OK", 10000) + cHalf, cHalf};
};

TEST_F(KyNetworkScriptTest, ADownloadBeginsAfterTheScriptAndItsFunctionsHearOfIt) {
    QDir(mDirectory.path()).mkdir("sub");
    expectRuns("ok, second = network:download(slow, 'sub'), network:download(good, '') "
               "down, log = network.Downloading, log .. 'script|' connect(network, 'downloadProgress', "
               "function(received, total) share = received / total end)");
    expectTexts({{"ok, second, down, log, network.Busy", "true, false, true, script|, false"}});
    int nbResumed = 0;
    engine().executeChunkAsCoroutine("n = 0 while true do n = n + 1 coroutine.yield() end");
    whenHalfIsThere([&] {
        expectTexts({{"share, network.Total, network.State, network:download(good, '')",
                      "0.5, 10000, Connection: Busy, false"}});
        nbResumed = std::stoi(eval("n"));
        engine().resumeCoroutines(0.02);
        EXPECT_EQ(std::to_string(nbResumed + 1), eval("n"));
        mSlow.goOn();
    });
    EXPECT_GT(nbResumed, 0) << "half was never there";
    expectTexts({{"log, share, network.Received, network.State", "script|**slow.bin|, 1, 10000, Connection: Ready"}});
    EXPECT_EQ(cHalf + cHalf, read("sub/slow.bin"));
}

TEST_F(KyNetworkScriptTest, ACancelledDownloadMakesRoomForAnotherAtOnce) {
    expectRuns("network:download(slow, '') network:cancel() network:cancel()");
    expectTexts({{"log, network.Downloading", ", true"}});
    waitFor("not network.Downloading");
    EXPECT_EQ("", mSlow.heard) << "it never began";
    expectRuns("network:download(slow, '')");
    whenHalfIsThere([] {
        expectRuns("network:cancel() again = network:download(good, '.') third = network:download(good, '.')");
        expectTexts({{"again, third, network.Downloading, network.Received", "true, false, true, 0"}});
    });
    expectTexts({{"log, again", "The download was cancelled.|**The download was cancelled.|**index|, true"}});
    EXPECT_EQ("unreadable", read("slow.bin"));
    EXPECT_EQ(cHalf, read("index"));
    expectRuns("log = '' network:download(slow, '')");
    whenHalfIsThere([] { KyNetworkConnectionObject::get()->abandon(); });
    expectTexts({{"log", "**"}});
}

TEST_F(KyNetworkScriptTest, EverySignalMayCancel) {
    for (const char* signal : {"stateChanged", "downloadProgress"}) {
        expectRuns(std::string("wanted, log = true, '' connect(network, '") + signal +
                   "', function() if wanted then wanted = false network:cancel() end end) network:download(slow, '')");
        waitFor("not network.Downloading");
        expectTexts({{"log, wanted", "**The download was cancelled.|, false"}});
        EXPECT_EQ("unreadable", read("slow.bin")) << signal;
    }
    expectRuns("log = '' network:download(good, '')");
    waitFor("not network.Downloading");
    expectTexts({{"log", "**index|"}});
}

TEST_F(KyNetworkScriptTest, NoScriptStandsUnderADownload) {
    // The first of the two waits in an event loop.
    expectRuns("network:download(good, '') reached = network:tryConnection(2000, good) "
               "log = log .. (network.Downloading and 'waiting|' or 'done|')");
    expectTexts({{"reached, log", "true, **waiting|"}});
    waitFor("not network.Downloading");
    expectTexts({{"log", "**waiting|**index|"}});
}

TEST_F(KyNetworkScriptTest, FailuresAreToldAndKeptInTheState) {
    const KyAnsweringServer locked(
        "HTTP/1.1 401 No\r\nWWW-Authenticate: Basic realm=\"x\"\r\nContent-Length: 0\r\n\r\n");
    engine().setLuaVariable("locked", KyField(locked.getUrl().toStdString()));
    expectRuns("network:download(locked, '')");
    waitFor("not network.Downloading");
    expectTexts({{"network.State", "Connection: Authentication required"}});
    expectTexts({{"network:tryConnection(2000, good), network.State, network.Message", "true, Connection: Ready, "},
                 {"network:tryConnection(-5, good), network.State", "false, Connection: Failed"}});
    expectRuns("log = '' network:download(good, 'no/such/folder')");
    waitFor("not network.Downloading");
    expectTexts({{"log:find('Unable to open ') ~= nil, network.Message:find('no/such') ~= nil", "true, true"}});
}

TEST_F(KyNetworkScriptTest, TheProxyIsSetHereAndItsPasswordReadNowhere) {
    expectRuns("network.ProxyHost, network.ProxyPort, network.ProxyUser = 'proxy', 3128, 'ann' "
               "network.ProxyPort = 70000 network.NoProxy = 'a; b' network:setProxyPassword('s3cret') "
               "network.UseSystemProxy = false");
    expectTexts({{"network.ProxyHost, network.ProxyPort, network.ProxyUser, network.NoProxy, network.UseSystemProxy, "
                  "log",
                  "proxy, 3128, ann, a,b, false, ppppp"},
                 {"network.ProxyPassword, (pcall(function() network.Busy = true end))", "nil, false"}});
    EXPECT_EQ("s3cret", KyNetworkConnection::get().getHttpProxyPassword());
    const KyObject& object = *KyNetworkConnectionObject::get();
    for (unsigned i = 0; i < object.getNbAttributes(); ++i) {
        KyField value;
        EXPECT_TRUE(object.getAttribute(i)->getValue(object, value));
        EXPECT_EQ(std::string::npos, value.toString().find("s3cret")) << object.getAttribute(i)->getName();
    }
}

TEST_F(KyNetworkScriptTest, AScriptAnswersWhoeverNeedsAUser) {
    KyNetworkPasswordManager::initializeClass();
    engine().bindClass(*KyNetworkPasswordManager::getType());
    expectRuns("passwords = KyNetworkPasswordManager.get() connect(passwords, 'authenticationSignal', function(url) "
               "early = passwords:answer('a:b', 'x') or passwords:answer('', 'x') "
               "if url.host == 'known' then ok = passwords:answer('ann', 's3:cret') end end)");
    for (const bool isKnown : {false, true}) {
        const KyURL url(isKnown ? "http://known/a/b" : "http://other/a/b");
        bool isAnswered = false;
        KyNetworkPasswordManager::get().authenticationSignal(url, isAnswered);
        EXPECT_EQ(isKnown, isAnswered);
        std::string user;
        std::string password;
        EXPECT_EQ(isKnown, KyNetworkPasswordManager::get().getUserPassword(url, user, password));
        EXPECT_EQ(isKnown ? "ann s3:cret" : " ", user + ' ' + password);
    }
    expectTexts({{"early, ok, passwords:answer('ann', 'x')", "false, true, false"}});
    engine().closeLuaState();
    KyNetworkPasswordManager::finalizeClass();
}

TEST_F(KyNetworkScriptTest, WhatWasGivenUpIsIdle) {
    const KyHolder<KyNetworkConnectionObject> held(KyNetworkConnectionObject::get());
    expectRuns("network:download(good, '')");
    KyNetworkConnectionObject::finalizeClass();
    EXPECT_FALSE(held->download("http://127.0.0.1/", ""));
    held->cancel();
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_EQ("", mGood.heard);
    EXPECT_NE(held.get(), KyNetworkConnectionObject::get());
}

} // namespace
