// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyQSettingsEditor.h"

#include <QString>

#include <array>
#include <functional>

class KyNetworkConnection;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;

/// The page of the settings for the HTTP proxy: the page "proxy" of the group Network. It shows what is used now and
/// tries out what is typed, which holds only from accept() on: that writes the connection's settings, the password
/// encrypted, and makes the connection read them.
///
/// ```
/// KyNetworkConnection::get().editSettings()->setFilePath("network.xml");
/// KyQProxySettingsEditor page(KyNetworkConnection::get());
/// KyQSettingsDialog().exec();
/// ```
class KYAPPLICATION_EXPORT KyQProxySettingsEditor : public KyQSettingsEditor {
    Q_OBJECT

public:
    /// The connection may end before the page.
    explicit KyQProxySettingsEditor(KyNetworkConnection& connection);

    /// Takes over what was changed on the page and nothing else; what makes no sense is refused as a whole. True when
    /// all is saved, in a file that only its owner may read and whose folder is made; what was taken over holds in any
    /// case.
    bool accept() override;
    void reset() override;

    /// What a person is told of a trial; the error and the status are those of KyNetworkConnection::tryConnection().
    static QString describeTrial(bool isReached, int networkError, int httpStatus);

protected:
    void updateTranslations() override;

private:
    struct Values {
        bool usesSystem = true;
        QString host;
        int port = 0;
        QString user;
        QString password;
        QString exclude;
        QString testUrl;

        bool operator==(const Values&) const = default;
    };
    static constexpr std::size_t cNbRows = 6;

    void build();
    /// An address in place of a name is taken apart, so that no password stays in sight.
    void splitHost();
    void test();
    void updateEnabled();

    KyNetworkConnection* editConnection();
    Values readConnection();
    Values readPage() const;
    /// A text to translate; null when the values can be kept.
    static const char* findFault(const Values& values);
    /// Shows what makeResult() says, now and in every language.
    void showResult(std::function<QString()> makeResult);
    /// False when the password cannot be encrypted: nothing is written then.
    bool write(const Values& values);
    bool takeChanges();
    bool save();

    QCheckBox* mUsesSystem;
    QLineEdit* mHost;
    QSpinBox* mPort;
    QLineEdit* mUser;
    QLineEdit* mPassword;
    QLineEdit* mExclude;
    QLineEdit* mTestUrl;
    QPushButton* mTest;
    QLabel* mResult;
    std::function<QString()> mMakeResult;
    /// In the order of the rows.
    std::array<QLabel*, cNbRows> mLabels{};
    /// What the page showed before a hand touched it.
    Values mShown;
    bool mIsUnsaved = false;
    bool mIsTesting = false;
};
