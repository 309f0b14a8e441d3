// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQProxySettingsEditor.h"

#include "KyNetworkConnection.h"

#include "KyQtText.h"
#include "KySettings.h"

#include "KyEncryption.h"

#include <QAccessible>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QUrl>

#include <algorithm>
#include <limits>

namespace {

using Connection = KyNetworkConnection;

constexpr unsigned cTimeOut = 5000;
constexpr int cDefaultPort = 80;
constexpr int cHighestPort = std::numeric_limits<unsigned short>::max();

/// In the order of the rows.
struct RowText {
    const char* name;
    const char* help;
};
constexpr RowText cRowTexts[] = {
    {QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "&Host"),
     QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "Name or address of the proxy")},
    {QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "&Port"),
     QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "Port of the proxy")},
    {QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "&User"),
     QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "Where the proxy asks for a name")},
    {QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "Pass&word"),
     QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "Is kept encrypted")},
    {QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "Not for these a&ddresses"),
     QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "Separated by commas, such as \"localhost, *.example.org\"")},
    {QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "Test addr&ess"),
     QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "What the test of the connection reaches for")},
};

struct TrialText {
    int networkError;
    const char* text;
};
constexpr TrialText cTrialTexts[] = {
    {QNetworkReply::ConnectionRefusedError,
     QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "The server refuses the connection.")},
    {QNetworkReply::RemoteHostClosedError,
     QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "The server closed the connection.")},
    {QNetworkReply::HostNotFoundError,
     QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "The server of the test address is not known.")},
    {QNetworkReply::TimeoutError, QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "There was no answer in time.")},
    {QNetworkReply::OperationCanceledError,
     QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "There was no answer in time.")},
    {QNetworkReply::SslHandshakeFailedError,
     QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "The certificate of the server is not trusted.")},
    {QNetworkReply::ProxyConnectionRefusedError,
     QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "The proxy refuses the connection.")},
    {QNetworkReply::ProxyConnectionClosedError,
     QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "The proxy closed the connection.")},
    {QNetworkReply::ProxyNotFoundError,
     QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "The proxy is not known under this name.")},
    {QNetworkReply::ProxyTimeoutError,
     QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "The proxy did not answer in time.")},
    {QNetworkReply::ProxyAuthenticationRequiredError,
     QT_TRANSLATE_NOOP("KyQProxySettingsEditor", "The proxy does not accept the user name and the password.")},
};

/// Makes what is typed its own, without touching the connection of the program.
class Trial : public KyNetworkConnection {};

bool isHostName(const QString& text) {
    QUrl url;
    url.setHost(text);
    return !url.host().isEmpty();
}

bool isHttp(const QUrl& url) {
    return url.isValid() && !url.host().isEmpty() && (url.scheme() == "http" || url.scheme() == "https");
}

unsigned short toPort(int number) {
    return static_cast<unsigned short>(number);
}

} // namespace

KyQProxySettingsEditor::KyQProxySettingsEditor(KyNetworkConnection& connection)
    : KyQSettingsEditor("proxy", "Network", "Proxy", &connection)
    , mUsesSystem(new QCheckBox)
    , mHost(new QLineEdit)
    , mPort(new QSpinBox)
    , mUser(new QLineEdit)
    , mPassword(new QLineEdit)
    , mExclude(new QLineEdit)
    , mTestUrl(new QLineEdit)
    , mTest(new QPushButton)
    , mResult(new QLabel) {
    build();
    KyQProxySettingsEditor::updateTranslations();
    KyQProxySettingsEditor::reset();
}

void KyQProxySettingsEditor::build() {
    mPort->setRange(1, cHighestPort);
    mPassword->setEchoMode(QLineEdit::Password);
    mResult->setWordWrap(true);
    mResult->setTextFormat(Qt::PlainText);
    auto* const layout = new QFormLayout(this);
    layout->addRow(mUsesSystem);
    const std::array<QWidget*, cNbRows> editors{mHost, mPort, mUser, mPassword, mExclude, mTestUrl};
    for (std::size_t i = 0; i < cNbRows; ++i) {
        mLabels[i] = new QLabel;
        mLabels[i]->setBuddy(editors[i]);
        layout->addRow(mLabels[i], editors[i]);
    }
    layout->addRow(mTest);
    layout->addRow(mResult);
    mUsesSystem->setObjectName(Connection::cSettingsUseSystemConfig);
    mHost->setObjectName(Connection::cSettingsProxyHost);
    mPort->setObjectName(Connection::cSettingsProxyPort);
    mUser->setObjectName(Connection::cSettingsProxyUser);
    mPassword->setObjectName(Connection::cSettingsEncryptedPwd);
    mExclude->setObjectName(Connection::cSettingsExclude);
    mTestUrl->setObjectName(Connection::cSettingsTestUrl);
    mTest->setObjectName("test");
    mResult->setObjectName("result");
    connect(mUsesSystem, &QCheckBox::toggled, this, &KyQProxySettingsEditor::updateEnabled);
    connect(mHost, &QLineEdit::editingFinished, this, &KyQProxySettingsEditor::splitHost);
    connect(mTest, &QPushButton::clicked, this, &KyQProxySettingsEditor::test);
}

void KyQProxySettingsEditor::updateTranslations() {
    setGroupName(KyApplication::toKyString(tr("Network")));
    setItemName(KyApplication::toKyString(tr("Proxy")));
    mUsesSystem->setText(tr("Use the proxy of the &system"));
    mUsesSystem->setToolTip(tr("Host and port are those that the system tells"));
    mTest->setText(tr("&Test connection"));
    mTest->setToolTip(tr("Tries to reach the test address with what the page shows"));
    // A name would keep its text from screen readers.
    mResult->setAccessibleDescription(tr("Result of the test"));
    for (std::size_t i = 0; i < cNbRows; ++i) {
        const QString text = tr(cRowTexts[i].name);
        mLabels[i]->setText(text);
        mLabels[i]->buddy()->setAccessibleName(QString(text).remove('&'));
        mLabels[i]->buddy()->setToolTip(tr(cRowTexts[i].help));
    }
    if (mMakeResult)
        mResult->setText(mMakeResult());
}

void KyQProxySettingsEditor::updateEnabled() {
    mHost->setEnabled(!mUsesSystem->isChecked());
    mPort->setEnabled(!mUsesSystem->isChecked());
}

void KyQProxySettingsEditor::splitHost() {
    const QString text = mHost->text().trimmed();
    const QUrl url(text.contains("://") ? text : "http://" + text);
    if (!url.isValid() || url.host().isEmpty() || url.host().compare(text, Qt::CaseInsensitive) == 0)
        return mHost->setText(text);
    if (url.port() > 0)
        mPort->setValue(url.port());
    if (!url.userName().isEmpty()) {
        mUser->setText(url.userName());
        mPassword->setText(url.password());
    }
    mHost->setText(url.host());
}

KyNetworkConnection* KyQProxySettingsEditor::editConnection() {
    return static_cast<KyNetworkConnection*>(editHasSettings());
}

/// What the system gives in place of host, port and user is shown only where there is nothing else.
KyQProxySettingsEditor::Values KyQProxySettingsEditor::readConnection() {
    const KyNetworkConnection& connection = *editConnection();
    const auto read = [&connection](const QString& name, const auto& value) {
        return connection.getUseSystemProxy()
                   ? connection.getSettings()->getAttribute(Connection::cSettingsPath, name, value)
                   : value;
    };
    Values values;
    values.usesSystem = connection.getUseSystemProxy();
    values.host = read(Connection::cSettingsProxyHost, connection.getHttpProxyHost());
    values.port = read(Connection::cSettingsProxyPort, static_cast<int>(connection.getHttpProxyPort()));
    if (values.port < 1 || values.port > cHighestPort)
        values.port = cDefaultPort;
    values.user = read(Connection::cSettingsProxyUser, connection.getHttpProxyUser());
    values.password = connection.getHttpProxyPassword();
    values.exclude = connection.getNoProxyAddress();
    values.testUrl = connection.getTestUrl();
    return values;
}

KyQProxySettingsEditor::Values KyQProxySettingsEditor::readPage() const {
    return {
        mUsesSystem->isChecked(),  mHost->text(), mPort->value(), mUser->text(), mPassword->text(), mExclude->text(),
        mTestUrl->text().trimmed()};
}

void KyQProxySettingsEditor::reset() {
    if (!editConnection())
        return;
    const Values values = readConnection();
    mUsesSystem->setChecked(values.usesSystem);
    mHost->setText(values.host);
    mPort->setValue(values.port);
    mUser->setText(values.user);
    mPassword->setText(values.password);
    mExclude->setText(values.exclude);
    mTestUrl->setText(values.testUrl);
    showResult([] { return QString(); });
    updateEnabled();
    mShown = readPage();
}

void KyQProxySettingsEditor::showResult(std::function<QString()> makeResult) {
    mMakeResult = std::move(makeResult);
    mResult->setText(mMakeResult());
    if (mResult->text().isEmpty())
        return;
    QAccessibleEvent event(mResult, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

const char* KyQProxySettingsEditor::findFault(const Values& values) {
    if (!values.usesSystem && !values.host.isEmpty() && !isHostName(values.host))
        return QT_TR_NOOP("The host of the proxy is not the name of a host.");
    if (!isHttp(QUrl(values.testUrl)))
        return QT_TR_NOOP("The test address does not begin with http:// or https://.");
    if (!QUrl(values.testUrl).userInfo().isEmpty())
        return QT_TR_NOOP("The test address must not name a user or password.");
    if (KyApplication::toQString(KyApplication::toKyString(values.password)) != values.password)
        return QT_TR_NOOP("The password has characters that cannot be kept.");
    return nullptr;
}

bool KyQProxySettingsEditor::write(const Values& values) {
    const std::string password = KyApplication::toKyString(values.password);
    const std::string encrypted =
        password.empty() ? password : KyEncryption::encryptString(password, KyEncryption::cKey);
    if (encrypted.empty() != password.empty())
        return false;
    const auto set = [this](const QString& name, const auto& value) {
        editHasSettings()->editSettings()->setAttribute(Connection::cSettingsPath, name, value);
    };
    set(Connection::cSettingsInitialize, true);
    set(Connection::cSettingsUseSystemConfig, values.usesSystem);
    set(Connection::cSettingsExclude, values.exclude);
    if (values.testUrl != mShown.testUrl)
        set(Connection::cSettingsTestUrl, values.testUrl);
    // What the system gave is not to be kept as if a person had typed it.
    if (!values.usesSystem) {
        set(Connection::cSettingsProxyHost, values.host);
        set(Connection::cSettingsProxyPort, values.port);
    }
    if (!values.usesSystem || values.user != mShown.user)
        set(Connection::cSettingsProxyUser, values.user);
    if (!values.usesSystem || values.password != mShown.password)
        set(Connection::cSettingsEncryptedPwd, QString::fromStdString(encrypted));
    return true;
}

bool KyQProxySettingsEditor::takeChanges() {
    const Values values = readPage();
    if (values == mShown)
        return true;
    const char* fault = findFault(values);
    if (!fault && !write(values))
        fault = QT_TR_NOOP("The password cannot be encrypted.");
    if (fault) {
        setProblem(fault);
        return false;
    }
    mIsUnsaved = true;
    mShown = values;
    editConnection()->updateDataFromSettings();
    return true;
}

bool KyQProxySettingsEditor::accept() {
    setProblem(QString());
    if (!editConnection())
        return false;
    splitHost();
    if (!takeChanges())
        return false;
    if (mIsUnsaved && !save()) {
        setProblem(cUnsaved, getHasSettings()->getSettings()->getFilePath());
        return false;
    }
    mIsUnsaved = false;
    return true;
}

bool KyQProxySettingsEditor::save() {
    KySettings& settings = *editHasSettings()->editSettings();
    if (settings.getFilePath().isEmpty())
        return true;
    if (!QDir().mkpath(settings.getFileDir(false)) || !settings.save())
        return false;
    QFile::setPermissions(settings.getFilePath(), QFile::ReadOwner | QFile::WriteOwner);
    return true;
}

/// Waits in an event loop, in which the page may end.
void KyQProxySettingsEditor::test() {
    if (mIsTesting)
        return;
    splitHost();
    const Values values = readPage();
    if (const char* const fault = findFault(values))
        return showResult([fault] { return tr(fault); });
    Trial trial;
    trial.editSettings()->setAttribute(Connection::cSettingsPath, Connection::cSettingsTestUrl, values.testUrl);
    trial.setHttpProxy(values.host, toPort(values.port), values.user, values.password);
    trial.setNoProxyAddress(values.exclude);
    trial.setUseSystemProxy(values.usesSystem, false);
    const QPointer<KyQProxySettingsEditor> page(this);
    mIsTesting = true;
    showResult([] { return tr("Testing ..."); });
    int error = 0;
    int status = 0;
    const bool isReached = trial.tryConnection(cTimeOut, values.testUrl, &error, &status);
    if (!page)
        return;
    mIsTesting = false;
    showResult([isReached, error, status] { return describeTrial(isReached, error, status); });
}

QString KyQProxySettingsEditor::describeTrial(bool isReached, int networkError, int httpStatus) {
    if (isReached)
        return tr("The connection works.");
    const auto* const known = std::ranges::find(cTrialTexts, networkError, &TrialText::networkError);
    if (known != std::end(cTrialTexts))
        return tr(known->text);
    if (httpStatus > 0)
        return tr("The connection works, but the test address answers with the status %1.").arg(httpStatus);
    return tr("The test address cannot be reached (error %1).").arg(networkError);
}
