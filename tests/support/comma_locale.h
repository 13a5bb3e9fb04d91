// A numeric locale whose decimal point is a comma, for the scope of one
// test: an installed one when the system has it; on POSIX otherwise one made
// with localedef in a scratch directory (LC_NUMERIC only), so that the check
// does not depend on which locales the machine happens to carry.
#pragma once

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#ifndef _WIN32
#include <unistd.h>
#endif

namespace brindle::test {

class CommaLocale {
  public:
    CommaLocale() {
        const char *now = std::setlocale(LC_NUMERIC, nullptr);
        previous_ = now != nullptr ? now : "C";
        for (const char *name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "fr_FR.UTF-8", "German_Germany.1252", "German"})
            if (try_locale(name))
                return;
#ifndef _WIN32
        make_one();
#endif
    }
    ~CommaLocale() {
        std::setlocale(LC_NUMERIC, previous_.c_str());
#ifndef _WIN32
        if (!made_.empty()) {
            if (had_locpath_)
                setenv("LOCPATH", old_locpath_.c_str(), 1);
            else
                unsetenv("LOCPATH");
            std::error_code ignored;
            std::filesystem::remove_all(made_, ignored);
        }
#endif
    }
    CommaLocale(const CommaLocale &) = delete;
    CommaLocale &operator=(const CommaLocale &) = delete;

    bool ok() const { return ok_; }

  private:
    bool try_locale(const char *name) {
        if (std::setlocale(LC_NUMERIC, name) == nullptr)
            return false;
        ok_ = std::localeconv()->decimal_point[0] == ',';
        if (!ok_)
            std::setlocale(LC_NUMERIC, previous_.c_str());
        return ok_;
    }

#ifndef _WIN32
    void make_one() {
        const std::filesystem::path dir = std::filesystem::temp_directory_path() /
                                          ("brindle-comma-locale-" + std::to_string(::getpid()));
        std::error_code e;
        std::filesystem::create_directories(dir, e);
        if (e)
            return;
        made_ = dir;
        {
            std::ofstream src(dir / "comma.src");
            src << "LC_NUMERIC\ndecimal_point \"<U002C>\"\nthousands_sep \"<U002E>\"\ngrouping 3\nEND LC_NUMERIC\n";
        }
        // -c: the other categories are missing on purpose.
        const std::string command = "localedef -c -i '" + (dir / "comma.src").string() + "' '" +
                                    (dir / "comma").string() + "' >/dev/null 2>&1";
        if (std::system(command.c_str()) == -1)
            return;
        if (const char *old = std::getenv("LOCPATH")) {
            had_locpath_ = true;
            old_locpath_ = old;
        }
        setenv("LOCPATH", dir.c_str(), 1);
        try_locale("comma");
    }
    std::filesystem::path made_;
    bool had_locpath_ = false;
    std::string old_locpath_;
#endif

    std::string previous_;
    bool ok_ = false;
};

} // namespace brindle::test
