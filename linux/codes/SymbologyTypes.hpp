// The type identifiers of the ten symbologies that are read.
#pragma once

#include <array>

namespace nivlo::symbology {

inline constexpr const char* kQRCode = "org.iso.QRCode";
inline constexpr const char* kPDF417 = "org.iso.PDF417";
inline constexpr const char* kUPCE = "org.gs1.UPC-E";
inline constexpr const char* kAztec = "org.iso.Aztec";
inline constexpr const char* kCode39 = "org.iso.Code39";
inline constexpr const char* kCode39Mod43 = "org.iso.Code39Mod43";
inline constexpr const char* kEAN13 = "org.gs1.EAN-13";
inline constexpr const char* kEAN8 = "org.gs1.EAN-8";
inline constexpr const char* kCode93 = "com.intermec.Code93";
inline constexpr const char* kCode128 = "org.iso.Code128";

inline constexpr std::array kAll = {kQRCode,      kPDF417, kUPCE, kAztec,  kCode39,
                                    kCode39Mod43, kEAN13,  kEAN8, kCode93, kCode128};

}  // namespace nivlo::symbology
