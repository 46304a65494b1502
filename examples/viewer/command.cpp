// The same search without a window, for scripts:
//
//     catalogue CATALOGUE TEXT        the password is in the environment, CATALOGUE_PASSWORD

#include "Catalogue.h"

#include "globals/StateHandler.h"

#include <QCoreApplication>

#include <cstdio>
#include <exception>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        static_cast<void>(std::fputs("usage: catalogue CATALOGUE TEXT\n", stderr));
        return 2;
    }
    TEKLUVA::StateHandler::getInstance()->newProcess(QString(), false, false);
    try {
        const auto articles =
            findArticles(arguments[1], qEnvironmentVariable("CATALOGUE_PASSWORD"), arguments[2]);
        for (const Article& article : articles)
            std::printf("%s;%s;%g;%g;%g\n", qPrintable(article.group), qPrintable(article.name),
                        article.width, article.depth, article.height);
        return articles.isEmpty() ? 1 : 0;
    } catch (const std::exception& e) {
        static_cast<void>(std::fprintf(stderr, "catalogue: %s\n", e.what()));
        return 1;
    }
}
