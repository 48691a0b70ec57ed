# Completes command lines of qvplot in bash; written by qvplot --completion bash.
_qvplot() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]}
  case $before in
    --x) COMPREPLY=(); return ;;
    --y) COMPREPLY=(); return ;;
    --y2) COMPREPLY=(); return ;;
    --function) COMPREPLY=(); return ;;
    --define) COMPREPLY=(); return ;;
    --panels) COMPREPLY=(); return ;;
    --separator) COMPREPLY=(); return ;;
    --decimal) COMPREPLY=(); return ;;
    --thousands) COMPREPLY=(); return ;;
    --comment) COMPREPLY=(); return ;;
    --encoding) COMPREPLY=($(compgen -W "utf-8 latin-1 utf-16le utf-16be" -- "$word")); return ;;
    --skip) COMPREPLY=(); return ;;
    --date-order) COMPREPLY=($(compgen -W "dmy mdy ymd" -- "$word")); return ;;
    --date-format) COMPREPLY=(); return ;;
    --time-zone) COMPREPLY=(); return ;;
    --x-time) COMPREPLY=($(compgen -W "s ms us ns found" -- "$word")); return ;;
    --style) COMPREPLY=(); return ;;
    --look) COMPREPLY=($(compgen -W "light dark print classic" -- "$word")); return ;;
    --font) COMPREPLY=(); return ;;
    --font-size) COMPREPLY=(); return ;;
    --line-width) COMPREPLY=(); return ;;
    --colors) COMPREPLY=(); return ;;
    --x-range) COMPREPLY=(); return ;;
    --y-range) COMPREPLY=(); return ;;
    --y2-range) COMPREPLY=(); return ;;
    --title) COMPREPLY=(); return ;;
    --x-title) COMPREPLY=(); return ;;
    --y-title) COMPREPLY=(); return ;;
    --y2-title) COMPREPLY=(); return ;;
    --hline) COMPREPLY=(); return ;;
    --vline) COMPREPLY=(); return ;;
    --hband) COMPREPLY=(); return ;;
    --vband) COMPREPLY=(); return ;;
    --out) COMPREPLY=($(compgen -f -- "$word")); return ;;
    --format) COMPREPLY=($(compgen -W "png svg pdf bmp" -- "$word")); return ;;
    --dpi) COMPREPLY=(); return ;;
    --size) COMPREPLY=(); return ;;
    --printer) COMPREPLY=(); return ;;
    --options) COMPREPLY=($(compgen -f -- "$word")); return ;;
    --latest) COMPREPLY=(); return ;;
    --help) COMPREPLY=($(compgen -W "all columns data looks styles axes output window formulas status" -- "$word")); return ;;
    --completion) COMPREPLY=($(compgen -W "bash zsh fish" -- "$word")); return ;;
  esac
  case $word in
    -*) COMPREPLY=($(compgen -W "--x --y --y2 --function --define --panels --separator --decimal --thousands --comment --encoding --header --no-header --skip --date-order --date-format --time-zone --x-time --explain --lines --symbols --bars --steps --area --hist --heat --box --stacked --style --look --font --font-size --line-width --colors --no-legend --x-range --y-range --y2-range --log-x --log-y --log-y2 --title --x-title --y-title --y2-title --hline --vline --hband --vband --out --format --dpi --size --print --printer --landscape --options --show --watch --follow --latest --help --version --completion " -- "$word")) ;;
    *) COMPREPLY=($(compgen -f -- "$word")) ;;
  esac
}
complete -o filenames -F _qvplot qvplot
