# Shared pieces of the benchmarks that compare cyclectl runs side by side on
# demo catalogs; sourced by bench/report and bench/stlilist.
#
#   parse_args "usage text" "$@"   sets reps (3), fresh (0) and sizes
#   setup_bin                       sets bin (the build's bin folder) and bench_root
#   demo_root N                     sets root and catalog: a root with N demo images
#   measure NAME COMMAND...         sets wall_NAME, cpu_NAME (best of $reps, seconds)
#                                   and peak_NAME (kilobytes)
#   ratio A B                       A / B with two decimals

parse_args() {
  local usage=$1
  shift
  reps=3
  fresh=0
  sizes=()
  while [ $# -gt 0 ]; do
    case "$1" in
      --reps) reps=$2; shift 2 ;;
      --fresh) fresh=1; shift ;;
      -*) echo "usage: $usage" >&2; exit 2 ;;
      *) sizes+=("$1"); shift ;;
    esac
  done
}

setup_bin() {
  local build=${BUILD_DIR:-build}
  if [ "$build" = build ]; then
    scripts/bootstrap
  else
    [ -f "$build/CMakeCache.txt" ] || cmake -S . -B "$build" >/dev/null
    cmake --build "$build" -j 2 --target cyclectl stashwell-init >/dev/null
  fi
  bin=$(cd "$build/bin" && pwd)
  bench_root=${BENCH_ROOT:-/tmp/stashwell-bench}
  mkdir -p "$bench_root"
}

demo_root() {
  root="$bench_root/$1"
  if [ "$fresh" = 1 ] || [ ! -f "$root/db/catalog.db" ]; then
    "$bin/stashwell-init" --root "$root" --force --master master1 --emm-server master1 \
      --demo "$1" >/dev/null
  fi
  catalog="$root/db/catalog.db"
}

measure() {
  local name=$1
  shift
  local best_wall="" best_cpu="" peak=0 wall cpu rss user sys
  for ((r = 0; r < reps; r++)); do
    /usr/bin/time -f "%e %U %S %M" -o "$bench_root/time.out" "$@" >/dev/null 2>&1
    read -r wall user sys rss <"$bench_root/time.out"
    cpu=$(awk -v u="$user" -v s="$sys" 'BEGIN { printf "%.2f", u + s }')
    if [ -z "$best_cpu" ] || awk -v a="$cpu" -v b="$best_cpu" 'BEGIN { exit !(a < b) }'; then
      best_cpu=$cpu
    fi
    if [ -z "$best_wall" ] || awk -v a="$wall" -v b="$best_wall" 'BEGIN { exit !(a < b) }'; then
      best_wall=$wall
    fi
    [ "$rss" -gt "$peak" ] && peak=$rss
  done
  printf -v "wall_$name" '%s' "$best_wall"
  printf -v "cpu_$name" '%s' "$best_cpu"
  printf -v "peak_$name" '%s' "$peak"
}

ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", (b > 0 ? a / b : 0) }'; }
