// SPDX-License-Identifier: MIT
// The words that are typed: blanks, limits, the end of input, and who is emptied before a wait.
#include "console/entree.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "console/sortie.h"

namespace premiers {
namespace {

using Lecture = Entree::Lecture;

Sortie sortie_perdue() {
  return Sortie([](std::string_view) { return true; });
}

/// Gives a text in pieces of `morceau` bytes at most.
Source source_morcelee(std::string texte, std::size_t morceau) {
  return {[texte = std::move(texte), morceau,
           position = std::size_t{0}](std::span<char> place) mutable {
            const std::size_t n =
                texte.copy(place.data(), std::min(morceau, place.size()), position);
            position += n;
            return n;
          },
          [] { return true; }};
}

/// All words until the end; a refused one is "!".
std::vector<std::string> mots(Source source) {
  Sortie sortie = sortie_perdue();
  Entree entree(std::move(source));
  std::vector<std::string> lus;
  for (;;) {
    switch (entree.lire_mot(sortie)) {
      case Lecture::mot:
        lus.emplace_back(entree.mot());
        break;
      case Lecture::mot_refuse:
        lus.emplace_back("!");
        break;
      case Lecture::fin:
        return lus;
    }
  }
}

TEST(Words, AreSeparatedByEveryKindOfBlank) {
  EXPECT_EQ(mots(source_texte(" a b\tc\nd\ve\ff\rg\r\n\n \t h ")),
            (std::vector<std::string>{"a", "b", "c", "d", "e", "f", "g", "h"}));
  EXPECT_EQ(mots(source_texte("a\xA0z \x85 \x1F")),
            (std::vector<std::string>{"a\xA0z", "\x85", "\x1F"}))
      << "only the six blanks of the C locale separate";
}

TEST(Words, AnEmptyInputOrBlanksAloneGiveNone) {
  EXPECT_TRUE(mots(source_texte("")).empty());
  EXPECT_TRUE(mots(source_texte(" \n\t \r\n")).empty());
}

TEST(Words, TheLastOneNeedsNoBlankBehindIt) {
  EXPECT_EQ(mots(source_texte("12 34")), (std::vector<std::string>{"12", "34"}));
}

TEST(Words, StayWholeWhereverTheInputIsCut) {
  const std::string long_mot(199, '9');
  const std::string trop_long(200, '9');
  const std::string texte = "1  23\n" + long_mot + " x " + trop_long + "\t456 " + long_mot;
  const std::vector<std::string> attendus{"1", "23", long_mot, "x", "!", "456", long_mot};
  for (std::size_t morceau = 1; morceau <= 8; ++morceau) {
    EXPECT_EQ(mots(source_morcelee(texte, morceau)), attendus) << morceau;
  }
  EXPECT_EQ(mots(source_morcelee(texte, 199)), attendus);
  EXPECT_EQ(mots(source_texte(texte)), attendus);
}

TEST(Words, StayWholeAcrossTheEndOfTheBuffer) {
  for (std::size_t avant = 65536 - 12; avant <= 65536 + 2; ++avant) {
    std::string texte(avant, ' ');
    texte += "1234567890 abc";
    EXPECT_EQ(mots(source_texte(texte)), (std::vector<std::string>{"1234567890", "abc"})) << avant;
  }
}

TEST(Words, OfTwoHundredCharactersAreRefusedAndThoseAfterThemRead) {
  EXPECT_EQ(mots(source_texte(std::string(199, 'a'))),
            (std::vector<std::string>{std::string(199, 'a')}));
  EXPECT_EQ(mots(source_texte(std::string(200, 'a') + " b")), (std::vector<std::string>{"!", "b"}));
  EXPECT_EQ(mots(source_texte(std::string(100'000, 'a') + " b")),
            (std::vector<std::string>{"!", "b"}));
}

TEST(Words, WithANulByteAreRefusedWhole) {
  using namespace std::string_view_literals;
  EXPECT_EQ(mots(source_texte("\0 a\0b c \0\0 d"sv)),
            (std::vector<std::string>{"!", "!", "c", "!", "d"}));
  EXPECT_EQ(mots(source_morcelee(std::string("ab\0cd e"sv), 1)),
            (std::vector<std::string>{"!", "e"}));
}

TEST(GiganticWord, PassesInConstantMemory) {
  constexpr std::size_t taille = std::size_t{96} << 20U;
  std::size_t donnes = 0;
  std::size_t plus_grand_morceau = 0;
  Sortie sortie = sortie_perdue();
  Entree entree({[&](std::span<char> place) {
                   if (donnes >= taille) {
                     donnes += 2;
                     place[0] = '\n';
                     place[1] = '7';
                     return donnes > taille + 4 ? std::size_t{0} : std::size_t{2};
                   }
                   std::fill(place.begin(), place.end(), '5');
                   donnes += place.size();
                   plus_grand_morceau = std::max(plus_grand_morceau, place.size());
                   return place.size();
                 },
                 [] { return true; }});
  rusage avant{};
  rusage apres{};
  getrusage(RUSAGE_SELF, &avant);
  EXPECT_EQ(entree.lire_mot(sortie), Lecture::mot_refuse);
  getrusage(RUSAGE_SELF, &apres);
  EXPECT_GE(donnes, taille);
  EXPECT_LE(plus_grand_morceau, std::size_t{1} << 20U);
  EXPECT_LT(apres.ru_maxrss - avant.ru_maxrss, 8 * 1024) << "kilobytes";
  EXPECT_EQ(entree.lire_mot(sortie), Lecture::mot);
  EXPECT_EQ(entree.mot(), "7");
}

/// A source that tells when it is asked, and ends after each of its texts.
struct Terminal {
  std::vector<std::string> textes;
  bool prete = false;
  std::string journal;

  Source source() {
    return {[this](std::span<char> place) {
              journal += 'L';
              if (textes.empty()) return std::size_t{0};
              const std::size_t n = textes.front().copy(place.data(), place.size());
              textes.erase(textes.begin());
              return n;
            },
            [this] { return prete; }};
  }
  Puits puits() {
    return [this](std::string_view octets) {
      journal += '<';
      journal += octets;
      journal += '>';
      return true;
    };
  }
};

TEST(EndOfInput, StaysUntilItIsForgotten) {
  Terminal terminal{{"a ", "", "b ", "", ""}, true, {}};
  Sortie sortie = sortie_perdue();
  Entree entree(terminal.source());
  EXPECT_EQ(entree.lire_mot(sortie), Lecture::mot);
  EXPECT_EQ(entree.lire_mot(sortie), Lecture::fin);
  EXPECT_EQ(entree.lire_mot(sortie), Lecture::fin);
  EXPECT_EQ(entree.lire_mot(sortie), Lecture::fin);
  EXPECT_EQ(terminal.journal, "LL") << "the source is not asked again";
  entree.oublier_fin();
  EXPECT_EQ(entree.lire_mot(sortie), Lecture::mot);
  EXPECT_EQ(entree.mot(), "b");
  EXPECT_EQ(entree.lire_mot(sortie), Lecture::fin);
}

TEST(EndOfInput, ThatCutsAWordIsMetByTheNextRead) {
  Terminal terminal{{"12"}, true, {}};
  Sortie sortie = sortie_perdue();
  Entree entree(terminal.source());
  EXPECT_EQ(entree.lire_mot(sortie), Lecture::mot);
  EXPECT_EQ(entree.mot(), "12");
  EXPECT_EQ(entree.lire_mot(sortie), Lecture::fin);
  EXPECT_EQ(terminal.journal, "LL") << "the end that ended the word is remembered";
}

TEST(Waiting, ThePromptIsHandedOverBeforeIt) {
  Terminal terminal{{"a b\n"}, false, {}};
  Sortie sortie(terminal.puits());
  Entree entree(terminal.source());
  sortie << "1?";
  EXPECT_EQ(entree.lire_mot(sortie), Lecture::mot);
  EXPECT_EQ(terminal.journal, "<1?>L");
  sortie << "2?";
  EXPECT_EQ(entree.lire_mot(sortie), Lecture::mot);
  EXPECT_EQ(terminal.journal, "<1?>L") << "an answer that is there needs no flush";
  sortie << "3?";
  EXPECT_EQ(entree.lire_mot(sortie), Lecture::fin);
  EXPECT_EQ(terminal.journal, "<1?>L<2?3?>L");
}

TEST(Waiting, AnswersThatAreReadyNeedNoFlush) {
  Terminal terminal{{"a ", "b ", "c "}, true, {}};
  Sortie sortie(terminal.puits());
  Entree entree(terminal.source());
  for (const std::string_view mot : {"a", "b", "c"}) {
    sortie << "?";
    EXPECT_EQ(entree.lire_mot(sortie), Lecture::mot);
    EXPECT_EQ(entree.mot(), mot);
  }
  EXPECT_EQ(terminal.journal, "LLL");
}

TEST(Waiting, AtTheEndEverythingIsHandedOver) {
  Terminal terminal{{}, true, {}};
  Sortie sortie(terminal.puits());
  Entree entree(terminal.source());
  sortie << "?";
  EXPECT_EQ(entree.lire_mot(sortie), Lecture::fin);
  EXPECT_EQ(terminal.journal, "L<?>");
  sortie << "?";
  EXPECT_EQ(entree.lire_mot(sortie), Lecture::fin);
  EXPECT_EQ(terminal.journal, "L<?><?>");
}

}  // namespace
}  // namespace premiers
