// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyNetworkPasswordManager.h"

#include "KyCallSignatures.h"
#include "KyCast.h"
#include "KyTypeBuilder.h"

#include <algorithm>
#include <mutex>
#include <string_view>
#include <utility>

KyNetworkPasswordManager* KyNetworkPasswordManager::msInstance = nullptr;
const KyType* KyNetworkPasswordManager::msType = nullptr;
bool KyNetworkPasswordManager::msIsClassInitialized = false;

namespace {

/// Without the "/" at its end, unless it is the root.
std::string getKey(const KyURL& url) {
    std::string directory = url.getDirectory();
    if (directory.size() > 1)
        directory.pop_back();
    return directory;
}

std::string_view getParent(std::string_view key) {
    return key.substr(0, key.rfind('/'));
}

/// Stands on the C++ stack while the signal is sent.
struct Question {
    Question(const KyURL& itsUrl, bool& itsFlag)
        : url(itsUrl)
        , flag(itsFlag)
        , outer(std::exchange(msInnermost, this)) {}
    ~Question() { msInnermost = outer; }
    Question(const Question&) = delete;
    Question& operator=(const Question&) = delete;

    const KyURL& url;
    bool& flag;
    Question* outer;
    static inline thread_local Question* msInnermost = nullptr;
};

} // namespace

KyNetworkPasswordManager::KyNetworkPasswordManager() = default;

KyNetworkPasswordManager::~KyNetworkPasswordManager() = default;

void KyNetworkPasswordManager::initializeClass() {
    if (std::exchange(msIsClassInitialized, true))
        return;
    KyObject::initializeType();
    using M = KyNetworkPasswordManager;
    msType = KyTypeBuilder<M>("KyNetworkPasswordManager", KyObject::getType())
                 .signal<&M::mAuthenticationSignal>("authenticationSignal")
                 .method("addProtectedUrl", &M::addProtectedUrl)
                 .method("answer", &M::answer)
                 .staticMethod("get", [] { return find(); })
                 .build();
    KyCallSignatures::add("KyNetworkPasswordManager", {"addProtectedUrl(url, credentials)", "answer(user, password)",
                                                       "authenticationSignal(url, flag)"});
    initializeSingleton();
}

void KyNetworkPasswordManager::finalizeClass() {
    if (!std::exchange(msIsClassInitialized, false))
        return;
    finalizeSingleton();
    KyType::remove(msType);
}

void KyNetworkPasswordManager::initializeSingleton() {
    if (!msInstance)
        msInstance = new KyNetworkPasswordManager;
}

void KyNetworkPasswordManager::finalizeSingleton() {
    delete msInstance;
    msInstance = nullptr;
}

const KyType* KyNetworkPasswordManager::getType() {
    return msType;
}

KyNetworkPasswordManager* KyNetworkPasswordManager::cast(KyObject* object) {
    return kyCast<KyNetworkPasswordManager>(object);
}

const KyType* KyNetworkPasswordManager::getObjectType() const {
    return getType();
}

void KyNetworkPasswordManager::addProtectedUrl(const KyURL& url, const std::string& credentials) {
    const std::scoped_lock guard(mMutex);
    std::unique_ptr<Directories>& directories = mHosts[url.getHost()];
    if (!directories)
        directories = std::make_unique<Directories>();
    directories->insert_or_assign(getKey(url), credentials);
}

bool KyNetworkPasswordManager::isPasswordProtected(const KyURL& url, std::string*& credentials) {
    const std::scoped_lock guard(mMutex);
    std::string* const found = findCredentials(url);
    if (found)
        credentials = found;
    return found != nullptr;
}

std::string* KyNetworkPasswordManager::findCredentials(const KyURL& url) {
    const auto host = mHosts.find(url.getHost());
    if (host == mHosts.end())
        return nullptr;
    Directories& directories = *host->second;
    const std::string wanted = url.getDirectory();
    auto found = std::ranges::find_if(directories, [&](const auto& entry) { return wanted.starts_with(entry.first); });
    if (found == directories.end())
        found = std::ranges::find_if(directories,
                                     [&](const auto& entry) { return wanted.starts_with(getParent(entry.first)); });
    return found == directories.end() ? nullptr : &found->second;
}

std::string KyNetworkPasswordManager::copyCredentials(const KyURL& url) {
    const std::scoped_lock guard(mMutex);
    const std::string* const found = findCredentials(url);
    return found ? *found : std::string();
}

bool KyNetworkPasswordManager::getUserPassword(const KyURL& url, std::string& user, std::string& password) const {
    std::string credentials = url.getUserInformation();
    if (credentials.empty() && msInstance)
        credentials = msInstance->copyCredentials(url);
    if (credentials.empty())
        return false;
    const std::size_t colon = credentials.find(':');
    user = credentials.substr(0, colon);
    if (colon != std::string::npos)
        password = credentials.substr(colon + 1);
    return true;
}

void KyNetworkPasswordManager::emitAuthenticationSignal(const KyURL& url, bool& flag) {
    authenticationSignal(url, flag);
}

void KyNetworkPasswordManager::authenticationSignal(const KyURL& url, bool& flag) const {
    const Question question(url, flag);
    mAuthenticationSignal.send(url, flag);
}

bool KyNetworkPasswordManager::answer(const std::string& user, const std::string& password) {
    const Question* const question = Question::msInnermost;
    if (!question || user.empty() || user.find(':') != std::string::npos)
        return false;
    addProtectedUrl(question->url, user + ':' + password);
    question->flag = true;
    return true;
}
