// SPDX-License-Identifier: MIT
// One question until it is answered: what each mode accepts and refuses, what it leaves behind.
#include "console/controle.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "tests/session_en_memoire.h"

namespace premiers {
namespace {

constexpr std::int64_t le_plus_grand = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t le_plus_petit = std::numeric_limits<std::int64_t>::min();

/// Thrown where what is typed ends.
struct PlusRien {};

/// A session in which `texte` is typed; the prompt of its questions is "?".
struct Dialogue {
  explicit Dialogue(std::string_view texte)
      : s(session_en_memoire(texte, ecran, [](int) { throw PlusRien(); })) {}
  Dialogue(const Dialogue&) = delete;
  Dialogue& operator=(const Dialogue&) = delete;

  /// Asks once; whether a word was accepted before the end.
  bool demander(Cas cas, bool xn = false) {
    try {
      reponse = controle(s, cas, "?", xn);
    } catch (const PlusRien&) {
      return false;
    }
    s.sortie.vider();
    return true;
  }

  std::string ecran;
  Session s;
  Reponse reponse;  // the last one
};

/// Whether the very first word is accepted.
bool accepte(Cas cas, std::string_view mot, bool xn = false) {
  Dialogue d(mot);
  return d.demander(cas, xn);
}

std::int64_t valeur(Cas cas, std::string_view mot) {
  Dialogue d(mot);
  EXPECT_TRUE(d.demander(cas)) << mot;
  return d.reponse.valeur;
}

std::string valeur0(std::string_view mot) {
  Dialogue d(mot);
  EXPECT_TRUE(d.demander(Cas::grand_nombre)) << mot;
  d.s.sortie << d.reponse.valeur0;
  d.s.sortie.vider();
  return d.ecran.substr(1);
}

const std::vector<std::string_view> ni_signe_ni_nombre{
    "+",   "-",  "00",  "07",  "+0",   "+00", "+07", "-0",  "-05", "7+",  "7-3", "7-", "--1",
    "++1", "+-", "-+1", "1e5", "1.5",  "1,5", "0x1", "abc", "*",   "7*",  "1/2", "=",  "7=",
    "**",  "é",  "0 ",  "7a",  "12 a", "a12", "/9",  ":",   "9:",  "+7a", "1_0"};

TEST(Valtest, GivesDigitsAndSignsAndNothingElse) {
  for (int c = 0; c < 256; ++c) {
    const auto caractere = static_cast<char>(static_cast<unsigned char>(c));
    const std::optional<int> v = valtest(caractere);
    if (c >= '0' && c <= '9') {
      EXPECT_EQ(v, c - '0');
    } else if (c == '+') {
      EXPECT_EQ(v, 1);
    } else if (c == '-') {
      EXPECT_EQ(v, -1);
    } else {
      EXPECT_FALSE(v.has_value()) << c;
    }
  }
}

TEST(MenuModes, AcceptExactlyOneDigitOfTheirOwn) {
  const struct {
    Cas cas;
    char de;
    char a;
  } modes[] = {{Cas::oui_non, '0', '1'},           {Cas::un_deux, '1', '2'},
               {Cas::zero_a_deux, '0', '2'},       {Cas::menu_principal, '0', '5'},
               {Cas::menu_consultation, '0', '5'}, {Cas::menu_concatenation, '0', '3'}};
  for (const auto& mode : modes) {
    for (int c = 1; c < 256; ++c) {
      const auto caractere = static_cast<char>(static_cast<unsigned char>(c));
      const std::string mot(1, caractere);
      Dialogue d(mot);
      const bool attendu = c >= mode.de && c <= mode.a;
      ASSERT_EQ(d.demander(mode.cas), attendu) << static_cast<int>(mode.cas) << " " << c;
      if (attendu) {
        EXPECT_EQ(d.reponse.valeur2, c - '0');
      }
    }
    for (const std::string_view mot : {"01", "00", "10", "11", "+1", "-1", "1a", "=1", "*"}) {
      EXPECT_FALSE(accepte(mode.cas, mot)) << mot;
    }
  }
}

TEST(UnsignedModes, AcceptPlainNumbersWithAPlusAtMost) {
  for (const Cas cas : {Cas::nombre, Cas::borne}) {
    EXPECT_EQ(valeur(cas, "7"), 7);
    EXPECT_EQ(valeur(cas, "+7"), 7);
    EXPECT_EQ(valeur(cas, "70"), 70);
    EXPECT_EQ(valeur(cas, "+70"), 70);
    EXPECT_EQ(valeur(cas, "0"), 0);
    EXPECT_EQ(valeur(cas, "10"), 10);
    EXPECT_EQ(valeur(cas, "1002003"), 1002003);
    EXPECT_EQ(valeur(cas, "9223372036854775807"), le_plus_grand);
  }
  EXPECT_EQ(valeur0("7"), "7");
  EXPECT_EQ(valeur0("+70"), "70");
  EXPECT_EQ(valeur0("0"), "0");
  EXPECT_EQ(valeur0("+18446744073709551616"), "18446744073709551616");
  EXPECT_EQ(valeur0("123456789012345678901234567890"), "123456789012345678901234567890");
}

TEST(UnsignedModes, RefuseSignsZerosInFrontAndEverythingElse) {
  for (const Cas cas : {Cas::nombre, Cas::borne, Cas::grand_nombre}) {
    EXPECT_FALSE(accepte(cas, "-7"));
    EXPECT_FALSE(accepte(cas, "=7"));
    for (const std::string_view mot : ni_signe_ni_nombre) {
      Dialogue d(mot);
      // The words with a blank inside are there for their first part.
      const bool accepte_le_premier = mot == "0 " || mot == "12 a";
      EXPECT_EQ(d.demander(cas), accepte_le_premier) << mot;
    }
  }
}

TEST(UnsignedModes, RefuseZeroOnlyWhileXnIsSet) {
  for (const Cas cas : {Cas::nombre, Cas::borne, Cas::grand_nombre}) {
    EXPECT_TRUE(accepte(cas, "0", false));
    EXPECT_FALSE(accepte(cas, "0", true));
    EXPECT_FALSE(accepte(cas, "+0", false));
    EXPECT_FALSE(accepte(cas, "+0", true));
    EXPECT_TRUE(accepte(cas, "10", true));
  }
  EXPECT_TRUE(accepte(Cas::nombre_signe, "0", true));
  EXPECT_TRUE(accepte(Cas::commande, "0", true));
}

TEST(SignedModes, AcceptBothSigns) {
  for (const Cas cas : {Cas::nombre_signe, Cas::commande}) {
    EXPECT_EQ(valeur(cas, "0"), 0);
    EXPECT_EQ(valeur(cas, "7"), 7);
    EXPECT_EQ(valeur(cas, "70"), 70);
    EXPECT_EQ(valeur(cas, "+7"), 7);
    EXPECT_EQ(valeur(cas, "-7"), -7);
    EXPECT_EQ(valeur(cas, "-123"), -123);
    EXPECT_EQ(valeur(cas, "+123"), 123);
    EXPECT_EQ(valeur(cas, "-10"), -10);
    EXPECT_EQ(valeur(cas, "9223372036854775807"), le_plus_grand);
    EXPECT_EQ(valeur(cas, "-9223372036854775808"), le_plus_petit);
  }
}

TEST(SignedModes, RefuseZerosInFrontAndEverythingElse) {
  for (const Cas cas : {Cas::nombre_signe, Cas::commande}) {
    for (const std::string_view mot : ni_signe_ni_nombre) {
      Dialogue d(mot);
      const bool accepte_le_premier = mot == "0 " || mot == "12 a";
      EXPECT_EQ(d.demander(cas), accepte_le_premier) << mot;
    }
  }
  EXPECT_FALSE(accepte(Cas::nombre_signe, "=7"));
}

// Modulo 2^64, read as a signed number: 2^64 = 18446744073709551616.
TEST(WrapAround, NumbersBeyondTheirRangeWrapSilently) {
  const std::string vingt_neufs(20, '9');
  for (const Cas cas : {Cas::nombre, Cas::borne, Cas::nombre_signe, Cas::commande}) {
    EXPECT_EQ(valeur(cas, vingt_neufs), 7766279631452241919);
    EXPECT_EQ(valeur(cas, "9223372036854775808"), le_plus_petit);
    EXPECT_EQ(valeur(cas, "18446744073709551615"), -1);
    EXPECT_EQ(valeur(cas, "18446744073709551616"), 0);
    EXPECT_EQ(valeur(cas, "+18446744073709551617"), 1);
    EXPECT_EQ(valeur(cas, "36893488147419103239"), 7);
  }
  for (const Cas cas : {Cas::nombre_signe, Cas::commande}) {
    EXPECT_EQ(valeur(cas, "-9223372036854775809"), le_plus_grand);
    EXPECT_EQ(valeur(cas, "-18446744073709551616"), 0);
    EXPECT_EQ(valeur(cas, "-18446744073709551621"), -5);
  }
}

TEST(WrapAround, AZeroThatComesFromWrappingIsRefusedLikeAnyOther) {
  EXPECT_FALSE(accepte(Cas::nombre, "18446744073709551616", true));
  EXPECT_FALSE(accepte(Cas::borne, "18446744073709551616", true));
  EXPECT_TRUE(accepte(Cas::nombre, "18446744073709551616", false));
  EXPECT_TRUE(accepte(Cas::grand_nombre, "18446744073709551616", true));
}

TEST(CommandMode, StarOpensOnlyWhenMoreThanTwoPrimesAreKnown) {
  EXPECT_FALSE(accepte(Cas::commande, "*"));
  Dialogue d("8 * 9 =* **");
  ASSERT_TRUE(d.demander(Cas::commande));
  EXPECT_FALSE(d.reponse.voir);
  d.s.etat.Nprem.etendre_au_rang(3);
  ASSERT_TRUE(d.demander(Cas::commande));
  EXPECT_TRUE(d.reponse.voir);
  EXPECT_FALSE(d.s.etat.un);
  ASSERT_TRUE(d.demander(Cas::commande));
  EXPECT_FALSE(d.reponse.voir) << "every question begins without the star";
  EXPECT_EQ(d.reponse.valeur, 9);
  EXPECT_FALSE(d.demander(Cas::commande));
  EXPECT_TRUE(d.s.etat.un);
}

TEST(CommandMode, OneLeadingEqualIsNotedAndTakenOff) {
  Dialogue d("=-12 =+7 =0");
  ASSERT_TRUE(d.demander(Cas::commande));
  EXPECT_TRUE(d.s.etat.un);
  EXPECT_EQ(d.reponse.valeur, -12);
  d.s.etat.un = false;
  ASSERT_TRUE(d.demander(Cas::commande));
  EXPECT_TRUE(d.s.etat.un);
  EXPECT_EQ(d.reponse.valeur, 7);
  ASSERT_TRUE(d.demander(Cas::commande));
  EXPECT_EQ(d.reponse.valeur, 0);
}

TEST(CommandMode, TheEqualStaysNotedWhateverFollows) {
  for (const std::string_view refuse : {"=", "==5", "=*", "=x", "=07", "=-"}) {
    Dialogue d(std::string(refuse) + " 5 6 *");
    d.s.etat.Nprem.etendre_au_rang(3);
    ASSERT_TRUE(d.demander(Cas::commande));
    EXPECT_EQ(d.ecran, "??") << refuse;
    EXPECT_EQ(d.reponse.valeur, 5);
    EXPECT_TRUE(d.s.etat.un) << refuse;
    ASSERT_TRUE(d.demander(Cas::commande));
    EXPECT_TRUE(d.s.etat.un) << "a question never clears it";
    ASSERT_TRUE(d.demander(Cas::commande));
    EXPECT_TRUE(d.reponse.voir);
    EXPECT_TRUE(d.s.etat.un);
  }
}

TEST(Refusal, PrintsThePromptAgainAndNothingElse) {
  Dialogue d("x 07 -7 7");
  ASSERT_TRUE(d.demander(Cas::nombre));
  EXPECT_EQ(d.ecran, "????");
}

TEST(Refusal, WhatStaysOnTheLineAnswersTheNextQuestion) {
  Dialogue d(" 3 4\n");
  ASSERT_TRUE(d.demander(Cas::menu_principal));
  EXPECT_EQ(d.reponse.valeur2, 3);
  ASSERT_TRUE(d.demander(Cas::menu_principal));
  EXPECT_EQ(d.reponse.valeur2, 4);
}

TEST(LongWords, HundredNinetyNineCharactersAreTheLimit) {
  const std::string dix_puissance_198 = std::string("1") + std::string(198, '0');
  EXPECT_EQ(valeur0(dix_puissance_198), dix_puissance_198);
  EXPECT_FALSE(accepte(Cas::grand_nombre, dix_puissance_198 + "0"));
  EXPECT_EQ(valeur0(std::string("+") + std::string(198, '7')), std::string(198, '7'));
  EXPECT_FALSE(accepte(Cas::grand_nombre, std::string("+") + std::string(199, '7')));
}

TEST(LongWords, TheEqualCountsAsACharacter) {
  // 10^k is 0 modulo 2^64 from k = 64 on.
  Dialogue d(std::string("=1") + std::string(198, '0') + " 3");
  ASSERT_TRUE(d.demander(Cas::commande));
  EXPECT_EQ(d.ecran, "??");
  EXPECT_EQ(d.reponse.valeur, 3);
  EXPECT_FALSE(d.s.etat.un) << "the word is refused as it was typed";
  Dialogue juste(std::string("=1") + std::string(197, '0'));
  ASSERT_TRUE(juste.demander(Cas::commande));
  EXPECT_EQ(juste.reponse.valeur, 0);
  EXPECT_TRUE(juste.s.etat.un);
}

TEST(NulByte, RefusesTheWholeWord) {
  using namespace std::string_view_literals;
  for (const std::string_view mot : {"7\0"sv, "\0007"sv, "1\0002"sv, "\0"sv, "=\0005"sv}) {
    Dialogue d(std::string(mot) + " 4");
    ASSERT_TRUE(d.demander(Cas::commande));
    EXPECT_EQ(d.ecran, "??");
    EXPECT_EQ(d.reponse.valeur, 4);
    EXPECT_FALSE(d.s.etat.un);
  }
}

TEST(EndOfInput, RepeatsThePromptAndCountsWithinOneQuestion) {
  std::string ecran;
  std::vector<int> repetitions;
  Session s = session_en_memoire("1", ecran, [&](int repetition) {
    repetitions.push_back(repetition);
    if (repetition == 2) throw PlusRien();
  });
  controle(s, Cas::oui_non, "a");
  EXPECT_TRUE(repetitions.empty());
  EXPECT_THROW(controle(s, Cas::oui_non, "b"), PlusRien);
  EXPECT_THROW(controle(s, Cas::oui_non, "c"), PlusRien);
  EXPECT_EQ(repetitions, (std::vector<int>{0, 1, 2, 0, 1, 2}));
  EXPECT_EQ(ecran, "abbbccc") << "each prompt is seen before the end is dealt with";
}

TEST(Questions, ForNumbersRefuseZero) {
  std::string ecran;
  Session s = session_en_memoire("0 5 0 6 3", ecran, [](int) { throw PlusRien(); });
  EXPECT_EQ(demander_nombre(s, Cas::borne, "?"), 5);
  EXPECT_EQ(demander_grand_nombre(s, "?"), 6);
  EXPECT_EQ(demander_choix(s, Cas::menu_principal, "?"), 3);
}

}  // namespace
}  // namespace premiers
