// The source of the library that holds the precompiled headers.
