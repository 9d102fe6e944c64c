#pragma once

#include "app/bridge/devices_bridge.h"
#include "app/bridge/discovery_bridge.h"
#include "app/bridge/mapping_bridge.h"
#include "app/bridge/notes_bridge.h"
#include "app/bridge/onboarding_bridge.h"
#include "app/bridge/picker_bridge.h"
#include "app/bridge/refreshing.h"
#include "app/bridge/texts.h"
#include "app/bridge/write_bridge.h"
#include "app/platform/platform_services.h"
#include "viewmodels/app_root.h"

#include <QtQml/qqmlregistration.h>

#include <memory>

class QJSEngine;
class QQmlEngine;

namespace trellivar {

/// Everything that QML sees of the application, under the name App.
class AppBridge : public Refreshing {
  Q_OBJECT
  QML_NAMED_ELEMENT(App)
  QML_SINGLETON
  Q_PROPERTY(trellivar::Texts* texts READ texts CONSTANT)
  /// "en" or "zh-Hans".
  Q_PROPERTY(QString language READ language WRITE setLanguage NOTIFY languageChanged)
  /// "dark", "light" or "system".
  Q_PROPERTY(QString appearance READ appearance WRITE setAppearance NOTIFY appearanceChanged)
  /// What the appearance comes to now.
  Q_PROPERTY(bool isDark READ isDark NOTIFY isDarkChanged)
  Q_PROPERTY(bool isMotionReduced READ isMotionReduced NOTIFY isMotionReducedChanged)
  Q_PROPERTY(bool startAtLogin READ startAtLogin WRITE setStartAtLogin NOTIFY startAtLoginChanged)
  /// The first steps are to be shown, instead of the pad.
  Q_PROPERTY(bool isOnboarding READ isOnboarding NOTIFY isOnboardingChanged)
  Q_PROPERTY(trellivar::OnboardingBridge* onboarding READ onboarding CONSTANT)
  Q_PROPERTY(trellivar::MappingBridge* mapping READ mapping CONSTANT)
  Q_PROPERTY(trellivar::DevicesBridge* devices READ devices CONSTANT)
  Q_PROPERTY(trellivar::WriteBridge* write READ write CONSTANT)
  Q_PROPERTY(trellivar::PickerBridge* picker READ picker CONSTANT)
  Q_PROPERTY(trellivar::NotesBridge* notes READ notes CONSTANT)
  /// Null while the sheet is closed.
  Q_PROPERTY(trellivar::DiscoveryBridge* discovery READ discovery NOTIFY discoveryChanged)

public:
  /// Without an engine keys can be edited, but are not remapped.
  AppBridge(AppRoot& root, PlatformServices& platform, FileTroubles& troubles, bool hasEngine,
            QObject* parent = nullptr);
  /// The one that exists; the QML engine asks for it.
  static AppBridge* create(QQmlEngine* engine, QJSEngine* scripts);

  Texts* texts() { return &texts_; }
  QString language() const { return language_; }
  void setLanguage(const QString& language);
  QString appearance() const { return appearance_; }
  void setAppearance(const QString& appearance);
  bool isDark() const { return isDark_; }
  bool isMotionReduced() const { return platform_.isMotionReduced(); }
  bool startAtLogin() const { return startAtLogin_; }
  void setStartAtLogin(bool startAtLogin);
  bool isOnboarding() const { return isOnboarding_; }
  OnboardingBridge* onboarding() { return &onboarding_; }
  MappingBridge* mapping() { return &mapping_; }
  DevicesBridge* devices() { return &devices_; }
  WriteBridge* write() { return &write_; }
  PickerBridge* picker() { return &picker_; }
  NotesBridge* notes() { return &notes_; }
  DiscoveryBridge* discovery() { return discovery_.get(); }

  /// The user goes on to the pad; ignored until everything is permitted.
  Q_INVOKABLE void finishOnboarding();
  /// Asks for what a step of the onboarding needs, 0 or 1, and opens the settings for it.
  Q_INVOKABLE void openPermissionSettings(int step);
  /// Does what the button of a note offers, which is a `NotesBridge::Kind`.
  Q_INVOKABLE void followNote(int index);
  /// Opens the sheet for the active mode.
  Q_INVOKABLE void openDiscovery();
  Q_INVOKABLE void closeDiscovery();

  void refresh() override;

Q_SIGNALS:
  void languageChanged();
  void appearanceChanged();
  void isDarkChanged();
  void isMotionReducedChanged();
  void startAtLoginChanged();
  void isOnboardingChanged();
  void discoveryChanged();

private:
  AppRoot& root_;
  PlatformServices& platform_;
  FileTroubles& troubles_;
  OnboardingBridge onboarding_;
  MappingBridge mapping_;
  DevicesBridge devices_;
  WriteBridge write_;
  PickerBridge picker_;
  NotesBridge notes_;
  std::unique_ptr<DiscoveryBridge> discovery_;
  Texts texts_;
  QString language_;
  QString appearance_;
  bool isDark_ = false;
  bool isMotionReduced_ = false;
  bool startAtLogin_ = false;
  bool isOnboarding_ = true;
};

} // namespace trellivar
