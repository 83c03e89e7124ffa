// Arrays, strings, dictionaries and resources.
#include <gtest/gtest.h>

#include <string>

#include "tests/support/Outcomes.h"

namespace orxtests {
namespace {

TEST(ArrayOperators, BuildAndUnloadArrays) {
  ExpectOutcomes({
      {"3 array 0 array", "[null null null] []"},
      {"-1 array", "-1 !array size must be non negative"},
      {"(x) array", "(x) !Operand error : needed integer type for array size"},
      {"2000000 array", "2000000 !limitcheck"},
      {"[ 1 2 3 ] [ ]", "[1 2 3] []"},
      {"1 [2 [3] 4]", "1 [2 [3] 4]"},
      {"1 2 ]", "1 2"},
      {"[1 2] aload", "1 2 [1 2]"},
      {"[1 2] aload 0 get neg pop", "-1 2"},
      {"5 aload", "5 !typecheck"},
      {"1 2 2 array astore", "[1 2]"},
      {"0 array astore", "[]"},
      {"5 astore", "5 !array type operand required for astore"},
      // The elements stay the objects that they are, and their other holders see the new contents.
      {"/x 7 def 1 2 [x 8] astore x", "[1 2] 1"},
      {"/a [0 0] def 5 a astore a", "[0 5]"},
      // The element stored into is the operator that is running.
      {"[/astore load] 5 exch astore astore", "[5] 5"},
  });
}

TEST(AccessOperators, ReadAndReplaceElements) {
  ExpectOutcomes({
      {"(abc) length /abc length [1 2] length << /a 1 >> length", "3 3 2 1"},
      {"{1 2} length", "!typecheck"},
      {"(AB) 1 get (\xe9!) 0 get [5 6] 0 get << /a 9 >> /a get", "66 -23 5 9"},
      {"[5 6 7] 3 get", "!rangecheck"},
      {"[5] -1 get", "!rangecheck"},
      {"<< /a 1 >> /b get", "!undefined"},
      {"{1} 0 get", "!typecheck"},
      {"<< /a 1 >> 0 get", "!typecheck"},
      {"/a [1 2] def a 0 (x) put a", "[(x) 2]"},
      {"/a [1] def a 1 2 put a", "[1] !rangecheck"},
      {"/a [1] def a /x 2 put a", "[1] !typecheck"},
      {"/s (abc) def s 1 120 put s s 1 376 put s 1 0 put s", "(ac) (ac)"},
      {"/s (abc) def s 1 (x) put s", "(abc) !typecheck"},
      {"/s (a) def s 0 0 put s length", "0"},
      // Copies of a string share its text until one of them changes.
      {"/s (abc) def /t s (x) copy def t 0 122 put s t", "(abc) (zbc)"},
      {"5 0 1 put {1} 0 2 put", ""},
      {"<< >> (a) 1 put", "!typecheck"},
      {"1 [1 2] {7} forall", "1"},
  });
}

TEST(DictionaryOperators, BuildDictionaries) {
  ExpectOutcomes({
      {"5 dict (x) dict dup /a 1 put", "<<0>> <<1>>"},
      {"<< /a 1 /b 2 >> << >>", "<<2>> <<0>>"},
      {"<< /a 1 /a 2 >> dup length exch /a get", "1 2"},
      {"<< 5 7 (x) 8 >> /\nget", "8"},  // keys that are no names are the empty text
      {"<< /d 1 dict >> /d get", "<<0>>"},
      {"mark /a >>", "mark /a !rangecheck"},
      {"1 2 >>", "1 2 !rangecheck"},
      {"1 dict dup dup /self exch put length", "1"},
      {"currentdict /self currentdict put /self 5 def /self currentdict def self length", "1"},
  });
}

TEST(DictionaryOperators, FindNamesFromTheTopOfTheDictionaryStackDown) {
  ExpectOutcomes({
      {"/x 1 def 1 dict begin x /x 2 def x end x", "1 2 1"},
      {"userdict begin /x 1 def end x", "1"},
      {"end", "!dictstackunderflow"},
      {"userdict begin end end", "!dictstackunderflow"},
      {"5 begin", "5 !typecheck"},
      {"(x) 1 def", "!typecheck"},
      {"/x 1 def /x load /add load", "1 --add--"},
      {"/x load", "/x !undefined"},
      {"(x) load", "!typecheck"},
      {"/nope where /add where exch length systemdict length eq", "false true true"},
      {"/x 1 def /x where pop currentdict length exch length", "1 1"},
      {"(x) where", "!typecheck"},
      {"userdict statusdict errordict globaldict", "<<0>> <<0>> <<0>> <<0>>"},
      {"statusdict begin currentdict /a 1 put a end a", "1"},
      // A dictionary that was overwritten where it stands open is none any more.
      {"/d 1 dict def d begin 5 [d] astore pop /x 7 def x", ""},
      {"/x 7 def /d 1 dict def d begin /x 8 def x 5 [d] astore pop x", "8 7"},
  });
  std::string program;
  for (int i = 0; i < orxeps::kMaxOpenDictionaries; ++i) program += "1 dict begin ";
  EXPECT_EQ(StackAfter(program), "");
  ExpectOutcomes({{program + "2 dict begin", "<<0>> !dictstackoverflow"}});
}

TEST(ResourceOperators, KeepInstancesInCategoriesOfUserdict) {
  ExpectOutcomes({
      {"(k) 5 /S defineresource (k) /S findresource", "5 5"},
      {"(k) 5 /S defineresource /k /S findresource neg", "-5 -5"},
      {"/k 5 /S defineresource pop (k) 6 /S defineresource pop /k /S findresource", "6"},
      {"1 dict begin /S << /k 3 >> def /k /S findresource end", "3"},
      {"/k 5 /S defineresource pop /k /S undefineresource /x /S undefineresource S", "<<0>>"},
      {"/k 5 /S defineresource pop /x /S findresource", "!undefined"},
      {"/k /S findresource", "!undefinedresource"},
      {"/k /S undefineresource", "!undefinedresource"},
      {"/S 5 def /k 7 /S defineresource /k /S findresource", "7 !undefinedresource"},
      {"(k) 5 (S) defineresource", "(k) 5 (S) !typecheck"},
      {"(k) (S) findresource", "(k) (S) !typecheck"},
      {"1 5 /S defineresource", "!typecheck"},
      // An empty key is no key, and no error.
      {"() 5 /S defineresource", ""},
      {"/k 5 /S defineresource pop () /S findresource () /S undefineresource S", "<<1>>"},
      // The topmost entry of the category's name counts, whatever it is; definitions go to
      // userdict.
      {"/k 5 /S defineresource pop 1 dict begin /S 7 def /k /S findresource", "!undefinedresource"},
      {"/k 5 /S defineresource pop 1 dict begin /S 7 def /k /S undefineresource end S",
       "<<1>> !undefinedresource"},
      {"1 dict begin /S << /k 3 >> def /k 5 /S defineresource pop /k /S findresource end /k /S "
       "findresource",
       "3 5"},
  });
}

}  // namespace
}  // namespace orxtests
