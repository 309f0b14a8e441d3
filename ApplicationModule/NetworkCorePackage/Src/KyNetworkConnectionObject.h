// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyObject.h"
#include "KyReferenceCounted.h"
#include "KySignal.h"

#include <memory>
#include <optional>
#include <string>

class KyNetworkConnection;
class QObject;
class QString;

/// KyNetworkConnection as scripts see it; the host publishes it as the global `network`. Main thread.
///
/// A download runs outside of scripts: it begins when the script that asked for it has returned to the host, while
/// frames and coroutines go on. Its state and that of a probe are kept in the connection. Nobody reads the proxy's
/// password here.
///
///     connect(network, "downloadFinished", function(path, error)
///         print(error == "" and path or error)
///     end)
///     network:download("http://example.com/model.obj", "models")
class KYAPPLICATION_EXPORT KyNetworkConnectionObject : public KyObject, public KyReferenceCounted {
public:
    static const KyType* getType();
    static KyNetworkConnectionObject* cast(KyObject* object);
    static void initializeType();
    static void finalizeType();
    static void initializeClass() { initializeType(); }
    /// Gives the one object up: what scripts still hold of it is idle from then on.
    static void finalizeClass();
    const KyType* getObjectType() const override;

    ~KyNetworkConnectionObject() override;
    /// Made when it is first asked for.
    static KyNetworkConnectionObject* get();
    /// As get(), null while nobody has asked for it.
    static KyNetworkConnectionObject* find() { return msInstance; }

    /// For people, in their language.
    std::string getState() const;
    /// What there is to say about the state; empty while busy.
    std::string getMessage() const;
    /// While anything is in progress.
    bool isBusy() const;
    /// From download() until "downloadFinished" is sent.
    bool isDownloading() const { return mNext || mRunning; }
    /// Bytes of the download that runs, or else of the last one; the total is -1 while it is not known.
    long long getReceived() const { return mReceived; }
    /// See getReceived.
    long long getTotal() const { return mTotal; }

    /// @{
    /// Empty for no proxy.
    std::string getProxyHost() const;
    void setProxyHost(const std::string& host);
    /// @}
    /// 0 for no proxy.
    int getProxyPort() const;
    /// Numbers out of 0 to 65535 are ignored.
    void setProxyPort(int port);
    /// @{
    /// Empty when the proxy asks for none.
    std::string getProxyUser() const;
    void setProxyUser(const std::string& user);
    /// @}
    /// Write-only: scripts cannot read it back.
    void setProxyPassword(const std::string& password);
    /// @{
    /// What goes past the proxy, see KyNetworkConnection::setNoProxyAddress.
    std::string getNoProxy() const;
    void setNoProxy(const std::string& list);
    /// @}
    /// @{
    /// Whether the system's proxy is taken.
    bool getUseSystemProxy() const;
    void setUseSystemProxy(bool usesSystem);
    /// @}

    /// Waits for the answer of an address, at most that many milliseconds (negative ones count as 0): the script stands
    /// still meanwhile, and so do frames when it was called in one. True for an answer without error; the state tells
    /// the rest.
    bool tryConnection(int timeoutMs, const std::string& url);
    /// Asks for a file, see KyNetworkConnection::downloadFile. A directory that is not absolute begins at the script's
    /// own, KyQtLuaBinding::getDataPath(), and must exist. False while another download is asked for or runs.
    bool download(const std::string& url, const std::string& directory);
    /// Ends the download, which is then told as finished with an error; another may be asked for at once. Nothing when
    /// there is none.
    void cancel();
    /// As cancel(), but the end is told to nobody: for whoever ends the scripts that asked for it.
    void abandon();

    /// Sent with the bytes received and in all, -1 where the server does not tell.
    KySignal<long long, long long> downloadProgress{"downloadProgress"};
    /// Sent with the path of the file, empty unless it was loaded without error, and with the error, else empty.
    KySignal<const std::string&, const std::string&> downloadFinished{"downloadFinished"};
    /// Sent when the state became another.
    KySignal<> stateChanged{"stateChanged"};
    /// Sent when a value of the proxy changed.
    KySignal<> proxyChanged{"proxyChanged"};

private:
    struct Request {
        std::string url;
        std::string directory;
        bool isCancelled = false;
        bool isAbandoned = false;
    };

    KyNetworkConnectionObject();

    void listen();
    void onProgress(long long received, long long total);
    void onProxyChanged();
    void onStateChanged();
    void startLater(int milliseconds);
    void start();
    void load(std::string& path, std::string& error);
    void finish(const std::string& path, const std::string& error);
    /// Null when there is none.
    Request* editRequest();

    /// Receives what Qt sends; null once given up.
    std::unique_ptr<QObject> mReceiver;
    std::optional<Request> mNext;
    std::optional<Request> mRunning;
    long long mReceived = 0;
    long long mTotal = -1;

    static KyNetworkConnectionObject* msInstance;
    static const KyType* msType;
};
