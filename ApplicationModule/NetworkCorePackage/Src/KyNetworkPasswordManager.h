// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyMutex.h"
#include "KyObject.h"
#include "KySignal.h"
#include "KyURL.h"

#include <map>
#include <memory>
#include <string>

/// User names and passwords of protected places in the network, by host and directory. In memory only, never written
/// and never printed. Made with the library and ended with it. Registering and looking up may be done on any thread;
/// listeners of the signal run on the thread of whoever sends it.
///
/// Credentials are a user name, ":" and a password, or a user name alone, as in a URL and like there not decoded.
///
/// They hold for directories that begin with the one they were registered for, letter by letter, so that those for
/// "/docs/" hold for "/docs2/" as well; where none do, for those that begin with the directory above it. What is
/// registered for the root, or for a directory right below it, so holds for the whole host.
///
/// ```
/// KyNetworkPasswordManager& manager = KyNetworkPasswordManager::get();
/// manager.addProtectedUrl(KyURL("https://example.org/docs/plan.pdf"), "ann:secret");
/// manager.getUserPassword(KyURL("https://example.org/docs/map.pdf"), user, password); // true
/// ```
class KYAPPLICATION_EXPORT KyNetworkPasswordManager : public KyObject {
public:
    /// Sent with the address; a listener that has an answer sets the flag.
    using AuthenticationSignal = KySignal<const KyURL&, bool&>;

    ~KyNetworkPasswordManager() override;

    static void initializeClass();
    static void finalizeClass();
    static const KyType* getType();
    static KyNetworkPasswordManager* cast(KyObject* object);
    const KyType* getObjectType() const override;
    /// Does nothing: it ends with the library.
    void destroy() override {}

    /// Between initializeClass and finalizeClass only.
    static KyNetworkPasswordManager& get() { return *msInstance; }
    /// As get(), null when there is none.
    static KyNetworkPasswordManager* find() { return msInstance; }

    /// Registers credentials for the host and directory of the URL, in place of those that were there.
    void addProtectedUrl(const KyURL& url, const std::string& credentials);
    /// Whether registered credentials hold for the URL: `credentials` then points at them, until they are replaced or
    /// the manager ends; else it is unchanged. Where other threads register, use getUserPassword, which copies.
    bool isPasswordProtected(const KyURL& url, std::string*& credentials);
    /// The user name and password of the URL itself, or else those registered. False, and both unchanged, when there
    /// are none. Credentials without a password leave `password` unchanged.
    bool getUserPassword(const KyURL& url, std::string& user, std::string& password) const;

    /// Tells that the URL wants a user; listeners may set the caller's flag. Both names do the same.
    void emitAuthenticationSignal(const KyURL& url, bool& flag);
    /// Sends the signal.
    void authenticationSignal(const KyURL& url, bool& flag) const;
    /// Answers the signal for a listener that cannot set the flag, such as a script: registers the user for its URL and
    /// sets the flag. False, and nothing done, unless the signal is being sent on this thread, with a name of at least
    /// one letter and without ":".
    bool answer(const std::string& user, const std::string& password);
    /// What these send, found as "authenticationSignal".
    AuthenticationSignal& editAuthenticationSignal() { return mAuthenticationSignal; }

private:
    using Directories = std::map<std::string, std::string>;

    KyNetworkPasswordManager();

    static void initializeSingleton();
    static void finalizeSingleton();

    /// The lock must be held. Null when there are none.
    std::string* findCredentials(const KyURL& url);
    /// Empty when there are none.
    std::string copyCredentials(const KyURL& url);

    std::map<std::string, std::unique_ptr<Directories>> mHosts;
    KyMutex mMutex;
    mutable AuthenticationSignal mAuthenticationSignal{"authenticationSignal"};

    static KyNetworkPasswordManager* msInstance;
    static const KyType* msType;
    static bool msIsClassInitialized;
};
