// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFieldToQVariantConvertersRepository.h"
#include "KyObjectQmlBinding.h"
#include "KyObjectToQVariantConverter.h"
#include "KyQmlTestObjects.h"
#include "KyReportsFixture.h"

#include <QCoreApplication>
#include <QEvent>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>

#include <memory>

/// A QML engine, the converter of all objects, and what Qt warned of.
class KyQmlFixture : public KyReportsFixture {
protected:
    void SetUp() override {
        KyFieldToQVariantConvertersRepository::initializeSingleton();
        repository().registerConverter(KyObject::getType(), mConverter.get());
        repository().registerConverter(QMetaType::QObjectStar, mConverter.get());
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) {
            msWarnings.push_back(text.toStdString());
        });
        msWarnings.clear();
    }
    void TearDown() override {
        qInstallMessageHandler(nullptr);
        mRoot.reset();
        KyFieldToQVariantConvertersRepository::finalizeSingleton();
    }

    static KyFieldToQVariantConvertersRepository& repository() { return *KyFieldToQVariantConvertersRepository::get(); }
    void withdraw() {
        repository().unregisterKyFieldConverter(mConverter.get());
        repository().unregisterQVariantConverter(mConverter.get());
        mConverter.reset();
    }
    QObject* bind(KyObject& object) { return mConverter->toQVariant(KyField(&object)).value<QObject*>(); }
    void publish(const QString& name, QObject* object, QQmlEngine& engine) {
        engine.rootContext()->setContextProperty(name, object);
        engine.globalObject().setProperty(name, engine.newQObject(object));
    }
    void publish(const QString& name, KyObject& object) { publish(name, bind(object), mEngine); }
    std::string evaluate(const char* script) { return mEngine.evaluate(script).toString().toStdString(); }
    QObject* load(const char* qml) {
        QQmlComponent component(&mEngine);
        component.setData(QByteArray("import QtQml 2.15\n") + qml, QUrl());
        mRoot.reset(component.create());
        EXPECT_TRUE(mRoot) << component.errorString().toStdString();
        return mRoot.get();
    }
    std::string property(const char* name) { return mRoot->property(name).toString().toStdString(); }
    static void deleteLater() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    std::unique_ptr<KyObjectToQVariantConverter> mConverter = std::make_unique<KyObjectToQVariantConverter>();
    QQmlEngine mEngine;
    std::unique_ptr<QObject> mRoot;
    static inline std::vector<std::string> msWarnings;
};
