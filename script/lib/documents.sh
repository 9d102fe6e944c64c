# shellcheck shell=bash
# Keeps the documents true where that can be checked: what they name must exist.

# Every relative link, picture, script and build preset that a Markdown file names.
check_documents() {
  local status=0 file name
  while IFS= read -r -d '' file; do
    while IFS= read -r name; do
      [ -e "$(dirname "$file")/$name" ] || complain "links to $name"
    done < <(grep -oE '\]\([^)]*\)' "$file" | sed -n 's/^](\([^)#:]*\)[)#].*/\1/p')
    while IFS= read -r name; do
      [ -e "$(dirname "$file")/$name" ] || complain "shows $name"
    done < <(grep -oE '\bsrc(set)?="[^":]*"' "$file" | sed 's/^[^"]*"//; s/"$//' | sort -u)
    while IFS= read -r name; do
      [ -x "$name" ] || complain "calls $name"
    done < <(grep -oE '\bscript/[a-z_]+\b' "$file" | grep -v '^script/lib$' | sort -u)
    while IFS= read -r name; do
      grep -q "\"name\": \"$name\"" CMakePresets.json || complain "uses preset $name"
    done < <(sed -n 's/.*--preset[ =]\([a-z]*\).*/\1/p' "$file")
  done < <(find . \( -name build -o -name '.?*' \) -prune -o -type f -name '*.md' -print0)
  return $status
}

complain() {
  echo "${file#./} $1, which does not exist"
  status=1
}
