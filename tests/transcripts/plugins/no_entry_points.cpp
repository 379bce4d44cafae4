// A library that is no plug-in: it exports nothing.
namespace {
[[maybe_unused]] int const nothing = 0;
}
