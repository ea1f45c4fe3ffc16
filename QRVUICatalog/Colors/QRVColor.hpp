#pragma once
// The design system's single palette. Every view takes its colours from here by
// token, never from literal values. Each token resolves, on first use, to the
// colour asset of the same name in the catalog's resource bundle (light and
// dark variant; the drawing layer picks one by colour scheme) and lives for the
// rest of the process. A missing asset stops the program.
#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

#include "Platform/drawing/Color.hpp"

// Asset-backed tokens in declaration order (the asset name is the token name).
#define QRV_COLOR_ASSET_TOKENS_BEFORE_EXERCISE(X) \
    X(brandPrimary)                               \
    X(brandPrimaryTxt)                            \
    X(brandPrimaryBG)                             \
    X(brandSecondary)                             \
    X(brandSecondaryTxt)                          \
    X(brandSecondaryBG)                           \
    X(brandTertiary)                              \
    X(brandTertiaryTxt)                           \
    X(brandTertiaryBG)                            \
    X(brandQuaternary)                            \
    X(brandQuaternaryBG)                          \
    X(brandPremium)                               \
    X(carbBG)                                     \
    X(carb)                                       \
    X(carbTxt)                                    \
    X(cardShadow)

#define QRV_COLOR_ASSET_TOKENS_AFTER_EXERCISE(X) \
    X(fatBG)                                     \
    X(fat)                                       \
    X(fatTxt)                                    \
    X(proteinBG)                                 \
    X(protein)                                   \
    X(proteinTxt)                                \
    X(neutralsPrimary)                           \
    X(neutralsPrimaryTxt)                        \
    X(neutralsSecondary)                         \
    X(neutralsTertiary)                          \
    X(neutralsQuaternary)                        \
    X(neutralsQuinary)                           \
    X(neutralsMidground1)                        \
    X(neutralsMidground2)                        \
    X(neutralsBackground)                        \
    X(neutralsInverse)                           \
    X(neutralsWhite)                             \
    X(neutralsBlack)                             \
    X(positiveBG)                                \
    X(positive)                                  \
    X(positiveTxt)                               \
    X(warningBG)                                 \
    X(warning)                                   \
    X(warningTxt)                                \
    X(negativeBG)                                \
    X(negative)                                  \
    X(negativeTxt)                               \
    X(range1)                                    \
    X(range2)                                    \
    X(range3)                                    \
    X(range4)                                    \
    X(range5)                                    \
    X(range6)                                    \
    X(range7)                                    \
    X(range8)                                    \
    X(range9)                                    \
    X(range10)                                   \
    X(facebook)                                  \
    X(shadow)

#define QRV_COLOR_ASSET_TOKENS_AFTER_GRAPH(X) \
    X(componentsTooltip)                      \
    X(componentsModal)                        \
    X(userVerifiedBG)                         \
    X(userVerifiedNonSelectedButton)          \
    X(userVerifiedNoTextNonSelected)          \
    X(userVerifiedNoTextSelected)             \
    X(userVerifiedSelectedButton)             \
    X(userVerifiedYesTextNonSelected)         \
    X(userVerifiedYesTextSelected)            \
    X(splashScreenBackground)                 \
    X(progressStart)                          \
    X(progressEnd)                            \
    X(sleepStageAwake)                        \
    X(sleepStageCore)                         \
    X(sleepStageDeep)                         \
    X(sleepStageREM)                          \
    X(sleepTimestamp)                         \
    X(sleepPhoneOuter)                        \
    X(sleepPhoneInner)                        \
    X(sleepHeaderBG)                          \
    X(sleepExtendedBG)                        \
    X(registrationGradient)                   \
    X(reusableCardShadow)

#define QRV_COLOR_ASSET_TOKENS(X)             \
    QRV_COLOR_ASSET_TOKENS_BEFORE_EXERCISE(X) \
    QRV_COLOR_ASSET_TOKENS_AFTER_EXERCISE(X)  \
    QRV_COLOR_ASSET_TOKENS_AFTER_GRAPH(X)

namespace qrv::catalog {

class QRVColor {
  public:
#define QRV_DECLARE_COLOR_TOKEN(name) static const platform::Color& name();
    QRV_COLOR_ASSET_TOKENS_BEFORE_EXERCISE(QRV_DECLARE_COLOR_TOKEN)
    // Not an asset: the hex colour "#FA9B31".
    static const platform::Color& exercise();
    QRV_COLOR_ASSET_TOKENS_AFTER_EXERCISE(QRV_DECLARE_COLOR_TOKEN)
    // Meal slots 1-6 take range7, range9, range6, range5, range8, range4 (the
    // order is deliberate). A copy; touching it initialises those six tokens.
    static std::vector<platform::Color> graphMealColors();
    QRV_COLOR_ASSET_TOKENS_AFTER_GRAPH(QRV_DECLARE_COLOR_TOKEN)
#undef QRV_DECLARE_COLOR_TOKEN

    // The asset names of every asset-backed token, in declaration order.
    static constexpr std::size_t kAssetTokenCount = 78;
    static const std::array<std::string_view, kAssetTokenCount>& assetNames();

    // The bundle's colour for an asset name; stops the program when the bundle
    // has no such asset.
    static platform::Color named(std::string_view assetName);
};

}  // namespace qrv::catalog
