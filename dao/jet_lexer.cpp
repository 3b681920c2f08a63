// Splitting Access SQL into tokens.
#include "jet_lexer.h"

#include <cctype>
#include <cstdio>

#include "jet_dates.h"
#include "jet_sql.h"

namespace kelvo::jet {
namespace {

bool isWordStart(unsigned char c) { return std::isalpha(c) || c == '_' || c >= 0x80; }
bool isWordChar(unsigned char c) { return std::isalnum(c) || c == '_' || c >= 0x80; }

[[noreturn]] void fail(std::string_view kind, std::string_view text) {
    throw SyntaxError(3075, std::string(kind) + " in query expression '" + std::string(text) +
                                "'.");
}

class Lexer {
public:
    explicit Lexer(std::string_view sql) : sql_(sql) {}

    std::vector<Token> run() {
        std::vector<Token> tokens;
        while (true) {
            skipBlanks();
            if (pos_ >= sql_.size()) break;
            tokens.push_back(next());
        }
        tokens.push_back({TokenKind::End, {}, sql_.size(), sql_.size()});
        return tokens;
    }

private:
    void skipBlanks() {
        while (pos_ < sql_.size() && std::isspace(static_cast<unsigned char>(sql_[pos_]))) ++pos_;
    }

    Token make(TokenKind kind, std::string text, size_t begin) {
        return {kind, std::move(text), begin, pos_};
    }

    Token next() {
        const size_t begin = pos_;
        const unsigned char c = static_cast<unsigned char>(sql_[pos_]);
        if (c == '\'' || c == '"') return quoted(static_cast<char>(c), begin);
        if (c == '[') return delimitedName(']', begin);
        if (c == '`') return delimitedName('`', begin);
        if (c == '#') return date(begin);
        if (std::isdigit(c) || (c == '.' && pos_ + 1 < sql_.size() &&
                                std::isdigit(static_cast<unsigned char>(sql_[pos_ + 1]))))
            return number(begin);
        if (c == '&' && pos_ + 1 < sql_.size() && (sql_[pos_ + 1] == 'H' || sql_[pos_ + 1] == 'h') &&
            pos_ + 2 < sql_.size() && std::isxdigit(static_cast<unsigned char>(sql_[pos_ + 2])))
            return hexNumber(begin);
        if (isWordStart(c)) {
            while (pos_ < sql_.size() && isWordChar(static_cast<unsigned char>(sql_[pos_]))) ++pos_;
            if (pos_ < sql_.size() && sql_[pos_] == '$') ++pos_;
            return make(TokenKind::Word, std::string(sql_.substr(begin, pos_ - begin)), begin);
        }
        return symbol(begin);
    }

    Token quoted(char quote, size_t begin) {
        std::string text;
        ++pos_;
        while (true) {
            if (pos_ >= sql_.size()) fail("Syntax error in string", sql_.substr(begin));
            if (sql_[pos_] == quote) {
                if (pos_ + 1 < sql_.size() && sql_[pos_ + 1] == quote) {
                    text += quote;
                    pos_ += 2;
                    continue;
                }
                ++pos_;
                return make(TokenKind::String, std::move(text), begin);
            }
            text += sql_[pos_++];
        }
    }

    Token delimitedName(char close, size_t begin) {
        const size_t end = sql_.find(close, pos_ + 1);
        if (end == std::string_view::npos)
            fail("Missing ), ], or Item", sql_.substr(begin));
        std::string text(sql_.substr(pos_ + 1, end - pos_ - 1));
        pos_ = end + 1;
        return make(TokenKind::Name, std::move(text), begin);
    }

    Token date(size_t begin) {
        const size_t end = sql_.find('#', pos_ + 1);
        if (end == std::string_view::npos) fail("Syntax error in date", sql_.substr(begin));
        const std::string_view body = sql_.substr(pos_ + 1, end - pos_ - 1);
        pos_ = end + 1;
        const auto value = parseDate(body);
        if (!value) fail("Syntax error in date", sql_.substr(begin, pos_ - begin));
        char buf[40];
        std::snprintf(buf, sizeof buf, "%.17g", *value);
        std::string text = buf;
        if (text.find_first_of(".e") == std::string::npos) text += ".0";
        return make(TokenKind::Date, std::move(text), begin);
    }

    Token number(size_t begin) {
        auto digits = [&] {
            while (pos_ < sql_.size() && std::isdigit(static_cast<unsigned char>(sql_[pos_])))
                ++pos_;
        };
        digits();
        if (pos_ < sql_.size() && sql_[pos_] == '.') {
            ++pos_;
            digits();
        }
        if (pos_ + 1 < sql_.size() && (sql_[pos_] == 'e' || sql_[pos_] == 'E')) {
            size_t save = pos_++;
            if (sql_[pos_] == '+' || sql_[pos_] == '-') ++pos_;
            if (pos_ < sql_.size() && std::isdigit(static_cast<unsigned char>(sql_[pos_])))
                digits();
            else
                pos_ = save;
        }
        if (pos_ < sql_.size() && isWordChar(static_cast<unsigned char>(sql_[pos_])))
            fail("Syntax error (missing operator)", sql_.substr(begin));
        std::string text(sql_.substr(begin, pos_ - begin));
        if (text.front() == '.') text.insert(text.begin(), '0');
        if (text.back() == '.') text += '0';
        return make(TokenKind::Number, std::move(text), begin);
    }

    Token hexNumber(size_t begin) {
        pos_ += 2;
        unsigned long long value = 0;
        while (pos_ < sql_.size() && std::isxdigit(static_cast<unsigned char>(sql_[pos_]))) {
            const char h = static_cast<char>(std::tolower(static_cast<unsigned char>(sql_[pos_++])));
            value = value * 16 + static_cast<unsigned>(h <= '9' ? h - '0' : h - 'a' + 10);
            if (value > 0xFFFFFFFFull) fail("Syntax error (missing operator)", sql_.substr(begin));
        }
        if (pos_ < sql_.size() && sql_[pos_] == '&') ++pos_;  // &H..& marks a Long
        return make(TokenKind::Number, std::to_string(value), begin);
    }

    Token symbol(size_t begin) {
        const char c = sql_[pos_++];
        if (pos_ < sql_.size()) {
            const char d = sql_[pos_];
            if ((c == '<' && (d == '>' || d == '=')) || (c == '>' && d == '=')) {
                ++pos_;
                return make(TokenKind::Symbol, std::string{c, d}, begin);
            }
        }
        static constexpr std::string_view kSingles = "(),.!;*/\\^+-&=<>";
        if (kSingles.find(c) == std::string_view::npos)
            fail("Syntax error (missing operator)", sql_.substr(begin));
        return make(TokenKind::Symbol, std::string(1, c), begin);
    }

    std::string_view sql_;
    size_t pos_ = 0;
};

}  // namespace

std::vector<Token> tokenize(std::string_view sql) { return Lexer(sql).run(); }

bool equalsNoCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(a[i])) !=
            std::tolower(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

bool isKeyword(const Token& token, std::string_view keyword) {
    return token.kind == TokenKind::Word && equalsNoCase(token.text, keyword);
}

}  // namespace kelvo::jet
