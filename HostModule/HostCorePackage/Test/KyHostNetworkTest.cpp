// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyAnsweringServer.h"
#include "KyHostProcess.h"

#include <QEventLoop>
#include <QTimer>

namespace {

/// The program beside a server in this process.
class KyHostNetworkTest : public KyHostProcessTest {
protected:
    KyHostNetworkTest() {
        for (const char* variable : {"http_proxy", "https_proxy", "HTTP_PROXY", "HTTPS_PROXY", "all_proxy"})
            mEnvironment.remove(variable);
    }

    KyHostResult runBeside(const QStringList& arguments) {
        QProcess process;
        QEventLoop loop;
        QObject::connect(&process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), &loop,
                         &QEventLoop::quit);
        QTimer::singleShot(cPatience, &loop, &QEventLoop::quit);
        start(process, arguments);
        loop.exec();
        const bool hasEnded = process.state() == QProcess::NotRunning && process.exitStatus() == QProcess::NormalExit;
        return {hasEnded ? process.exitCode() : -1, process.readAllStandardOutput().toStdString(),
                process.readAllStandardError().toStdString()};
    }

    KyAnsweringServer mServer{KyAnsweringServer::makeHead("200 OK", 4) + "data"};
    const QString mTell = "connect(network, 'downloadFinished', function(path, message) "
                          "print(path:match('[^/]*$'), message) end) ";
};

TEST_F(KyHostNetworkTest, ARunWithoutAViewWaitsForItsDownload) {
    const QString url = mServer.getUrl() + "some/file.bin";
    const KyHostResult result = runBeside({"--no-window", "-e", mTell + "print(network:download('" + url + "', '.'))"});
    EXPECT_EQ(0, result.code) << result;
    EXPECT_EQ("true\nfile.bin\t\n", result.output);
    EXPECT_EQ("data", read("file.bin"));
}

TEST_F(KyHostNetworkTest, TheProxyIsReadAtTheStart) {
    ASSERT_TRUE(QDir(mFolder.path()).mkpath("kyhost"));
    const QString port = QString::number(mServer.serverPort());
    write("kyhost/network.xml", "<Settings><Proxy useSystemConfiguration='false' host='127.0.0.1' port='" +
                                    port.toLatin1() + "'/></Settings>");
    const KyHostResult result =
        runBeside({"--no-window", "-e", mTell + "network:download('http://nowhere.invalid/a', '.')"});
    EXPECT_EQ("a\t\n", result.output) << result;
    EXPECT_TRUE(mServer.heard.startsWith("GET http://nowhere.invalid/a ")) << mServer.heard.toStdString();
}

TEST_F(KyHostNetworkTest, ASandboxHasNoNetwork) {
    EXPECT_EQ("nil\n", runBeside({"--no-window", "--sandbox", "-e", "print(network)"}).output);
}

TEST_F(KyHostNetworkTest, ADownloadThatIsUnderWayEndsWithTheProgram) {
    KyAnsweringServer slow(KyAnsweringServer::makeHead("200 OK", 8) + "data", "rest");
    const KyHostResult result =
        runBeside({"--no-window", "-e",
                   mTell + "network:download('" + slow.getUrl() +
                       "', '.') return coroutine.create(function() "
                       "while network.Received < 4 do coroutine.yield() end print('half') host:quit() end)"});
    EXPECT_EQ(0, result.code) << result;
    EXPECT_EQ("half\n", result.output);
    EXPECT_EQ("", result.errors);
    EXPECT_FALSE(QFile::exists(getPath("index")));
}

} // namespace
