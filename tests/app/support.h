// What the tests of the command line share: drawings from short notes, scratch files, runs.
#pragma once

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

namespace app_tests {

/// "LINE 8=A 10=0 20=0 11=5 21=0" as the lines of an entity.
inline std::string entity(const std::string& note)
{
    std::istringstream words(note);
    std::string word;
    words >> word;
    std::string text = "0\n" + word + "\n";
    while (words >> word) {
        const std::size_t sign = word.find('=');
        text += word.substr(0, sign) + "\n" + word.substr(sign + 1) + "\n";
    }
    return text;
}

/// A whole DXF text with those entities.
inline std::string dxfText(const std::vector<std::string>& notes)
{
    std::string text = "0\nSECTION\n2\nENTITIES\n";
    for (const std::string& note : notes) text += entity(note);
    return text + "0\nENDSEC\n0\nEOF\n";
}

inline std::string lineNote(double x1, double y1, double x2, double y2)
{
    std::ostringstream note;
    note.precision(17);
    note << "LINE 8=A 10=" << x1 << " 20=" << y1 << " 11=" << x2 << " 21=" << y2;
    return note.str();
}

/// A folder of its own for a test, gone afterwards.
class Scratch {
public:
    Scratch()
    {
        std::string name = (std::filesystem::temp_directory_path() / "calcora.XXXXXX").string();
        folder_ = mkdtemp(name.data());
    }
    ~Scratch()
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    std::string path(const std::string& name) const { return (folder_ / name).string(); }
    std::string write(const std::string& name, const std::string& text) const
    {
        std::ofstream(path(name), std::ios::binary) << text;
        return path(name);
    }
    int fileCount() const
    {
        return static_cast<int>(std::distance(std::filesystem::directory_iterator(folder_),
                                              std::filesystem::directory_iterator()));
    }

private:
    std::filesystem::path folder_;
};

inline std::string readFile(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

/// What the program answered.
struct Answer {
    int status = -1;
    std::string out;
    std::string err;
};

/// Starts the program in a folder, its streams going to files of another, or where else told.
inline pid_t start(const std::string& words, const Scratch& folder, const Scratch& streams,
                   const std::string& out = "", const std::string& err = "")
{
    const std::string command = "cd " + folder.path("") + " && exec " CALCORA_PROGRAM " " + words +
                                " >" + (out.empty() ? streams.path("out") : out) + " 2>" +
                                (err.empty() ? streams.path("err") : err);
    const pid_t child = fork();
    if (child == 0) execl("/bin/sh", "sh", "-c", command.c_str(), nullptr), _exit(127);
    return child;
}

inline Answer finish(pid_t child, const Scratch& streams)
{
    int status = 0;
    waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readFile(streams.path("out")),
            readFile(streams.path("err"))};
}

inline Answer run(const std::string& words, const Scratch& folder = Scratch())
{
    const Scratch streams;
    return finish(start(words, folder, streams), streams);
}

inline nlohmann::json runJson(const std::string& words, const Scratch& folder = Scratch())
{
    const Answer answer = run(words + " --json", folder);
    EXPECT_EQ(answer.status, 0) << answer.err;
    return nlohmann::json::parse(answer.out, nullptr, false);
}

/// What cannot be done is told in one line, and leaves no file behind.
inline void expectRefusal(const std::string& words, const std::string& told, const Scratch& folder)
{
    SCOPED_TRACE(words);
    const int filesBefore = folder.fileCount();
    const Answer answer = run(words, folder);
    EXPECT_EQ(answer.status, 2);
    EXPECT_THAT(answer.err,
                testing::AllOf(testing::StartsWith("calcora: "), testing::HasSubstr(told)));
    EXPECT_EQ(std::count(answer.err.begin(), answer.err.end(), '\n'), 1);
    EXPECT_EQ(answer.out, "");
    EXPECT_EQ(folder.fileCount(), filesBefore);
}

}  // namespace app_tests
