#pragma once

#include "QnXmlLib16/fastinfoset/FastInfosetContext.h"

#include <cstddef>
#include <memory>
#include <string_view>

// What the writer and the reader of Fast Infoset share: constants of ITU-T X.891 and the rule for
// the vocabulary that a document starts with.

namespace QnXmlLib16 {

// The declarations by FInfoDecl, less one: version, encoding and standalone in every combination
// that the standard has.
constexpr std::string_view FI_DECLARATION_LIST[] = {
    "<?xml encoding='finf'?>",
    "<?xml encoding='finf' standalone='yes'?>",
    "<?xml encoding='finf' standalone='no'?>",
    "<?xml version='1.0' encoding='finf'?>",
    "<?xml version='1.0' encoding='finf' standalone='yes'?>",
    "<?xml version='1.0' encoding='finf' standalone='no'?>",
    "<?xml version='1.1' encoding='finf'?>",
    "<?xml version='1.1' encoding='finf' standalone='yes'?>",
    "<?xml version='1.1' encoding='finf' standalone='no'?>",
};

// Identification and version.
constexpr unsigned char kFastInfosetHeader[] = {0xE0, 0x00, 0x00, 0x01};

// Each form of an integer or a length falls into bands by its value; the bases say where they
// begin. What is sent is the value less its base.
constexpr unsigned long kIntegerBit2Band2 = 65;
constexpr unsigned long kIntegerBit2Band3 = 8257;
constexpr unsigned long kIntegerBit3Band2 = 33;
constexpr unsigned long kIntegerBit3Band3 = 2081;
constexpr unsigned long kIntegerBit3Band4 = 526369;
constexpr unsigned long kIntegerBit4Band2 = 17;
constexpr unsigned long kIntegerBit4Band3 = 1041;
constexpr unsigned long kIntegerBit4Band4 = 263185;
constexpr unsigned long kLengthBit2Band2 = 65;
constexpr unsigned long kLengthBit2Band3 = 321;
constexpr unsigned long kLengthBit5Band2 = 9;
constexpr unsigned long kLengthBit5Band3 = 265;
constexpr unsigned long kLengthBit7Band2 = 3;
constexpr unsigned long kLengthBit7Band3 = 259;

inline std::unique_ptr<CFIVocabulary> NewVocabulary(const CFastInfosetContext& context)
{
    return context.GetUseGeneratedVocabulary()
               ? std::make_unique<CFIVocabulary>(*context.GetVocabulary())
               : std::make_unique<CFIVocabulary>();
}

} // namespace QnXmlLib16
