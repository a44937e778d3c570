# Sourced by ./test: reads the sources with clang-tidy, by the profile in .clang-tidy.

# Another compiler's precompiled headers mean nothing to clang-tidy, so the compile commands of the
# build go without them. Files that the build made are left out.
write_tidy_commands() {
    mkdir -p build/tidy
    sed -E 's/ -include [^ ]*cmake_pch\.hxx//; s/ -Winvalid-pch//g; s/ -fpch-preprocess//' \
        build/dev/compile_commands.json >build/tidy/compile_commands.json
}

tidied_sources() {
    git ls-files 'src/*.cpp' 'demo/*.cpp' 'fuzz/*.cpp' 'tests/*.cpp' |
        while read -r file; do
            if grep -qF "\"file\": \"$PWD/$file\"" build/tidy/compile_commands.json; then
                printf '%s\n' "$file"
            fi
        done
}

# Fails at the first file with a finding, after all files were read.
tidy() {
    write_tidy_commands
    tidied_sources | xargs -P "$(nproc)" -n 4 clang-tidy --quiet -p build/tidy 2>build/tidy/notes.log
    say "clang-tidy has nothing to say about $(tidied_sources | wc -l) files."
}
