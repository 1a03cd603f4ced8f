#include "token.hpp"

#include <tao/pegtl.hpp>

namespace vorm::evaluation {
namespace {
namespace grammar {

namespace pegtl = tao::pegtl;
using pegtl::eolf;
using pegtl::one;
using pegtl::opt;
using pegtl::plus;
using pegtl::seq;
using pegtl::sor;
using pegtl::star;
using pegtl::string;

struct Comment : seq<sor<one<'#'>, string<'/', '/'>>, pegtl::until<pegtl::at<eolf>>> {};
struct Blank : sor<plus<pegtl::space>, Comment> {};

struct Exponent : seq<one<'e', 'E'>, opt<one<'+', '-'>>, plus<pegtl::digit>> {};
struct Fraction : seq<one<'.'>, plus<pegtl::digit>> {};
struct Number : seq<sor<seq<plus<pegtl::digit>, opt<one<'.'>, star<pegtl::digit>>>, Fraction>,
                    opt<Exponent>> {};

// Every character beyond ASCII can be part of a name.
struct NameStart : sor<pegtl::alpha, one<'_'>, pegtl::not_range<'\0', '\x7f'>> {};
struct NameText : seq<NameStart, star<sor<NameStart, pegtl::digit, one<'.'>>>> {};
struct Name : NameText {};
struct Parameter : seq<one<'$'>, NameText> {};

template <char Quote>
struct InQuotes
    : seq<one<Quote>,
          star<sor<seq<one<'\\'>, pegtl::not_one<'\n'>>, pegtl::not_one<Quote, '\\', '\n'>>>,
          one<Quote>> {};
struct Quoted : InQuotes<'"'> {};
struct Member : InQuotes<'\''> {};
struct Unclosed : seq<one<'"', '\''>, pegtl::until<pegtl::at<eolf>>> {};

struct Symbol : sor<string<'-', '>'>, string<'=', '='>, string<'~', '='>, string<'!', '='>,
                    string<'<', '='>, string<'>', '='>, string<'|', '|'>, string<'&', '&'>,
                    one<'(', ')', '[', ']', ',', '<', '>', '|', '&', '+', '-', '*', '/', '~', '!',
                        '{', '}'>> {};
struct Foreign : pegtl::any {};

struct Words
    : pegtl::until<pegtl::eof,
                   sor<Blank, Number, Name, Quoted, Member, Parameter, Unclosed, Symbol, Foreign>> {
};

template <TokenKind Kind>
struct Append {
    template <class Input>
    static void apply(const Input& word, std::vector<Token>& tokens) {
        tokens.push_back({Kind, {word.begin(), word.size()}});
    }
};

template <class Rule>
struct Action : pegtl::nothing<Rule> {};
template <>
struct Action<Number> : Append<TokenKind::Number> {};
template <>
struct Action<Name> : Append<TokenKind::Name> {};
template <>
struct Action<Quoted> : Append<TokenKind::Quoted> {};
template <>
struct Action<Member> : Append<TokenKind::Member> {};
template <>
struct Action<Parameter> : Append<TokenKind::Parameter> {};
template <>
struct Action<Unclosed> : Append<TokenKind::Unclosed> {};
template <>
struct Action<Symbol> : Append<TokenKind::Symbol> {};
template <>
struct Action<Foreign> : Append<TokenKind::Foreign> {};

using Input = pegtl::memory_input<pegtl::tracking_mode::lazy>;

}  // namespace grammar
}  // namespace

std::vector<Token> tokensOf(std::string_view text) {
    std::vector<Token> tokens;
    grammar::Input input(text.data(), text.data() + text.size(), "");
    tao::pegtl::parse<grammar::Words, grammar::Action>(input, tokens);
    tokens.push_back({TokenKind::End, text.substr(text.size())});
    return tokens;
}

bool isName(std::string_view text) {
    grammar::Input input(text.data(), text.data() + text.size(), "");
    return tao::pegtl::parse<tao::pegtl::seq<grammar::Name, tao::pegtl::eof>>(input);
}

}  // namespace vorm::evaluation
