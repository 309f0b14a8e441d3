// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"
#include "KyConnectionState.h"

#include "KyHasSettings.h"

#include <QDir>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QObject>
#include <QRegExp>
#include <QString>

#include <memory>
#include <utility>

class KyDownload;
class KyNoProxyMatcher;

/// The program's HTTP proxy and connection state, and the two operations that wait for the network: a probe and a
/// download. One for the process, made by the first get(), gone at the end of the process. For the thread of Qt's event
/// loop: both operations run that thread's events while they wait, so that slots and tasks go on meanwhile.
///
/// The settings are attributes of the element "Proxy", whose names are the constants; with
/// "useSystemConfiguration" the system's proxy goes over the host and port kept there.
///
/// ```
/// KyNetworkConnection& connection = KyNetworkConnection::get();
/// QString file, error;
/// if (connection.downloadFile("http://example.com/model.obj", QDir::temp(), file, error, 65536, QString()))
///     report(error);
/// ```
class KYAPPLICATION_EXPORT KyNetworkConnection : public QObject, public KyHasSettings {
    Q_OBJECT
public:
    /// Where in the settings the values stand.
    static const QString cSettingsPath;
    /// Bool: isInitialized().
    static const QString cSettingsInitialize;
    /// Text: the proxy's host; empty for none.
    static const QString cSettingsProxyHost;
    /// Number, 0 to 65535; what is none counts as 0.
    static const QString cSettingsProxyPort;
    /// Text: who asks at the proxy.
    static const QString cSettingsProxyUser;
    /// The password in KyApplication's default character set, encrypted with KyEncryption::cKey. One that cannot be
    /// decrypted counts as empty; without the attribute the password stays.
    static const QString cSettingsEncryptedPwd;
    /// See setNoProxyAddress().
    static const QString cSettingsExclude;
    /// Bool: getUseSystemProxy().
    static const QString cSettingsUseSystemConfig;
    /// For which address the system is asked; nothing is sent there.
    static const QString cSettingsTestUrl;

    ~KyNetworkConnection() override;

    /// The one instance; made with the library.
    static KyNetworkConnection& get();
    /// For people, in the language of the call; "Connection: Unkown error" for what is no state.
    static const QString& getStateString(KyConnectionState state);

    /// An empty host or port 0 is no proxy. One proxyChanged() when anything changed.
    void setHttpProxy(const QString& host, unsigned short port, const QString& user, const QString& password);
    /// @{
    /// As setHttpProxy, for one of the values.
    void setHttpProxyHost(const QString& host);
    void setHttpProxyPort(unsigned short port);
    void setHttpProxyUser(const QString& user);
    void setHttpProxyPassword(const QString& password);
    /// @}
    /// Empty without a proxy.
    const QString& getHttpProxyHost() const { return mProxyHost; }
    /// 0 without a proxy.
    unsigned short getHttpProxyPort() const { return mProxyPort; }
    /// Empty when the proxy asks for none.
    const QString& getHttpProxyUser() const { return mProxyUser; }
    /// In plain text: for no message and no log.
    const QString& getHttpProxyPassword() const { return mProxyPassword; }

    /// What goes past the proxy, separated by commas or semicolons, blanks ignored: regular expressions that are
    /// searched anywhere in an address ("localhost" also in its path). One that is none is taken for a wildcard text
    /// ("*.corp.example"), "<local>" for every host without a dot, "[::1]" for itself; empty ones count for nothing.
    /// Only the first 512 letters of an address are searched.
    /// proxyChanged() when the list changed.
    void setNoProxyAddress(const QString& list);
    /// Separated by commas, otherwise as given.
    QString getNoProxyAddress() const;

    /// Takes the system's proxy now if asked to, else only remembers that it is not used. A system without proxy gives
    /// an empty host and port 80, one that names no port (or 65535, which Qt makes of none) port 80; one that names no
    /// user or password leaves those of now. If `updateNoProxy`, the
    /// system's exceptions replace ours.
    void setUseSystemProxy(bool useSystem, bool updateNoProxy);
    bool getUseSystemProxy() const { return mUsesSystemProxy; }
    /// For which address the system is asked: that of the settings, or a page that everybody can reach.
    QString getTestUrl() const;

    /// Whether the address is to be asked of the proxy.
    bool useHttpProxy(const QString& url) const;
    /// A caching HTTP proxy, which cannot carry https (a tunnel for that is of type HttpProxy), or none.
    QNetworkProxy toQNetworkProxy(const QString& url) const;

    /// Kept here for those who send requests, as are the next three; no signal.
    void setAllowNegotiations(bool allow) { mAllowsNegotiations = allow; }
    bool allowNegotiations() const { return mAllowsNegotiations; }
    /// Whether certificates with errors are to be accepted; a download and a probe never do.
    void setSSLUnsafe(bool allow) { mAllowsSslUnsafe = allow; }
    /// See setSSLUnsafe.
    bool allowSSLUnsafe() const { return mAllowsSslUnsafe; }
    /// @{
    /// The header "User-Agent".
    void setHttpUserAgent(QString userAgent) { mUserAgent = std::move(userAgent); }
    QString getHttpUserAgent() const { return mUserAgent; }
    /// @}
    /// @{
    /// The header "Referer".
    void setHttpReferer(QString referer) { mReferer = std::move(referer); }
    QString getHttpReferer() const { return mReferer; }
    /// @}
    /// Whether somebody has chosen the proxy once; kept in the settings.
    void setInitialized(bool isInitialized) { mIsInitialized = isInitialized; }
    bool isInitialized() const { return mIsInitialized; }

    /// stateChanged() when getState() changed by it, not for a new message alone.
    void setState(KyConnectionState state, const QString& message);
    /// Busy while there is anything in progress, else what was set.
    KyConnectionState getState() const;
    /// The text of the present state.
    const QString& getStateString() const;
    /// Empty while busy.
    QString getUserMessage() const;
    /// Counts an operation that begins; stateChanged() with the first.
    void incBusy();
    /// Counts an operation that ended; stateChanged() with the last, nothing when there is none.
    void decBusy();
    /// While anything is in progress.
    bool isBusy() const { return mNbBusy > 0; }

    /// Asks for the head of a resource and waits at most that many milliseconds; with 0 the request is sent and given
    /// up at once. True for an answer without error; a redirect is one. Stores Qt's error (5 after the time) and the
    /// HTTP status (0 without answer) through the pointers that are not null. Leaves state and busy count to the
    /// caller.
    bool tryConnection(unsigned int timeoutMs, const QString& url, int* networkError, int* httpStatus);

    /// Loads a resource into the directory and returns once it is there. The file is named after the last part of the
    /// address's path, "index" when there is none; it never lies elsewhere. Any number of redirects within http and
    /// https is followed, to each address once; the file is named after the last. One at a time: from inside of another
    /// download it returns OperationCanceledError at once.
    ///
    /// @param url of http or https.
    /// @param directory where the file is put; it must exist.
    /// @param filePath set to the file, also when loading failed; left alone when it could not be opened.
    /// @param errorString set on failure, for people; without passwords.
    /// @param readBufferSize bytes that are loaded ahead of writing; 0 and less is unlimited. Much less than 65536 is
    ///     slow.
    /// @param cookie sent as the header "Cookie" with each request unless empty; cut at the first control character.
    /// @return NoError; OperationCanceledError also for a file that cannot be written, a full disk included;
    ///     TooManyRedirectsError for a circle; InsecureRedirectError for a redirect out of http;
    ///     ProtocolUnknownError for one to what is no address; else the reply's error.
    ///
    /// A body that ends too early is an error where the server tells its length, and mostly where it sends chunks; at
    /// worst that is noticed two seconds after the connection broke. What looks whole all the same: a body of neither,
    /// one that is cut off within its encoding (Qt asks for gzip and undoes it, and tells no length then), and chunks
    /// after which anything else than a chunk comes. A limited read buffer does not limit what one part of an encoded
    /// body is decoded to.
    ///
    /// Only an answer with the whole resource is written: the statuses below 200, 204, 205, 206 and 304 are errors
    /// (UnknownContentError). What is there as a link, a directory, a pipe or a device counts as not to be opened.
    ///
    /// What there is of the file after an error stays, but for a cancelled download. A file of the same name is kept
    /// as it is until the first bytes of a good answer come, then it is overwritten, even if the rest never comes:
    /// load what is not to be lost into an empty directory.
    QNetworkReply::NetworkError downloadFile(const QString& url, const QDir& directory, QString& filePath,
                                             QString& errorString, long long readBufferSize, const QString& cookie);
    /// Ends the download that runs, from inside of its waiting: it returns OperationCanceledError, and what it has
    /// written is removed. Nothing when none runs. While a server sends headers without end, Qt holds that up for five
    /// seconds.
    void cancelDownload();
    /// True while downloadFile waits.
    bool isDownloading() const { return mDownload != nullptr; }

    /// Reads the values, each with the one of now for default, the system's proxy included.
    void updateDataFromSettings() override;

Q_SIGNALS:
    /// Of the download that runs; the total is -1 when the server does not tell it.
    void downloadProgress(qint64 received, qint64 total);
    /// Two in a row are normal when the settings and the system both name a proxy: read the values when needed.
    void proxyChanged();
    /// Sent when getState() became another.
    void stateChanged();

protected:
    KyNetworkConnection();

protected Q_SLOTS:
    /// Writes what the sending reply has got.
    void downloadReadyRead();

private:
    bool takeQtProxy(const QString& testUrl, bool updateNoProxy);
    bool takeSystemProxy(const QString& testUrl, bool updateNoProxy);
    template <class Change>
    void changeState(Change change);

    QString mProxyHost;
    unsigned short mProxyPort = 80;
    QString mProxyUser;
    QString mProxyPassword;
    QRegExp mNoProxy;
    bool mUsesSystemProxy = true;
    bool mAllowsNegotiations = true;
    bool mAllowsSslUnsafe = false;
    QString mUserAgent;
    QString mReferer;
    KyConnectionState mState = KyConnectionState::Ready;
    QString mUserMessage;
    unsigned int mNbBusy = 0;
    bool mIsInitialized = false;
    /// Lives in downloadFile().
    KyDownload* mDownload = nullptr;
    std::unique_ptr<KyNoProxyMatcher> mNoProxyMatcher;
};
