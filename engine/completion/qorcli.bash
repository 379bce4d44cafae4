# Completion of qorcli in bash: its options and their arguments, and the command
# line behind -c, for which qorcli itself is asked.
#
# A line in quotes is left open, for more may follow. Pressing Tab twice lists
# the words that can be typed, with their help.

# Prints a word of the shell's as the program will see it.
_qorcli_unquoted() { # WORD
  local word=$1
  case $word in
    \'*) word=${word#\'} word=${word%\'} ;;
    \"*)
      word=${word#\"}
      [[ $word == *\\\" ]] || word=${word%\"}
      word=${word//\\\"/\"} word=${word//\\\$/\$} word=${word//\\\\/\\}
      ;;
    *)
      word=${word//\\/}
      word=${word/#\~/$HOME}
      ;;
  esac
  printf '%s' "$word"
}

# Prints TEXT so that it can stand behind QUOTE on the shell's command line.
_qorcli_quoted() { # QUOTE TEXT
  local text=$2
  if [[ $1 == \" ]]; then
    text=${text//\\/\\\\} text=${text//\"/\\\"} text=${text//\$/\\\$}
    text=${text//\`/\\\`}
  fi
  printf '%s' "$text"
}

# Prints the candidates for LINE, with the plug-ins and the session that the
# options in front of the current word name. A unit separator stands for each tab:
# read would take two tabs, around an empty text, for one.
_qorcli_candidates() { # LINE
  local program options=() word i
  program=$(_qorcli_unquoted "${COMP_WORDS[0]}")
  for ((i = 1; i < COMP_CWORD - 1; i++)); do
    case ${COMP_WORDS[i]} in
      --plugin | --mode | --cursor | --login)
        word=${COMP_WORDS[i + 1]}
        [[ $word == = ]] && word=${COMP_WORDS[i + 2]}
        options+=("${COMP_WORDS[i]}" "$(_qorcli_unquoted "$word")")
        ;;
    esac
  done
  "$program" "${options[@]}" --complete "$1" 2>/dev/null | tr '\t' '\037'
}

# The word of LINE that is being typed: behind the last blank or |, or from the
# quote on that has not been closed.
_qorcli_last_word() { # LINE
  local quotes=${1//[^\"]/}
  if ((${#quotes} % 2)); then
    printf '"%s' "${1##*\"}"
  else
    printf '%s' "${1##*[ |]}"
  fi
}

# Completes the command line in the current word.
_qorcli_line() {
  local current=${COMP_WORDS[COMP_CWORD]} quote='' line word kind text help
  local lines=() list=() follows='' other=''
  [[ $current == [\"\']* ]] && quote=${current:0:1}
  line=$(_qorcli_unquoted "$current"; printf .)
  line=${line%.}
  word=$(_qorcli_last_word "$line")
  while IFS=$'\037' read -r kind text help _; do
    text=${text//\\\\/\\}
    list+=("$text${help:+  ${help%%\\n*}}")
    case $text in
      '<cr>') continue ;;
      \<*\>) other=1 ;;
      # A text that begins with a quote may stand for a word that does not.
      *)
        [[ ${text,,} == "${word,,}"* || ${text,,} == \""${word,,}"* ]] &&
          lines+=("${line%"$word"}$text")
        ;;
    esac
    [[ $kind == [25] ]] && follows=1
  done < <(_qorcli_candidates "$line")

  compopt -o nospace -o nosort 2>/dev/null
  if [[ $COMP_TYPE == 63 ]]; then # lists only, inserts nothing
    COMPREPLY=("${list[@]}")
  elif [[ -z $word && -n $other ]]; then # could be something else than these
    COMPREPLY=()
  elif [[ ${#lines[@]} == 0 && -n $follows ]]; then
    _qorcli_reply "$quote" "$line "
  elif [[ ${#lines[@]} == 1 && $(_qorcli_last_word "$lines") != @(\"*|*/) ]]; then
    _qorcli_reply "$quote" "$lines "
  else
    _qorcli_reply "$quote" "${lines[@]}"
  fi
}

# Offers lines. A line that stands alone in QUOTE is offered with and without
# another blank: otherwise the quote would be closed behind it.
_qorcli_reply() { # QUOTE [LINE...]
  local quote=$1 text
  shift
  for text; do
    text=$(_qorcli_quoted "$quote" "$text"; printf .)
    COMPREPLY+=("${text%.}")
  done
  if [[ -z $quote ]]; then
    COMPREPLY=("${COMPREPLY[@]/#/\'}")
  elif [[ ${#COMPREPLY[@]} == 1 ]]; then
    COMPREPLY+=("${COMPREPLY[0]} ")
  fi
}

_qorcli() {
  local current=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD - 1]}
  COMPREPLY=()
  [[ $current == = ]] && current=''
  [[ $option == = ]] && option=${COMP_WORDS[COMP_CWORD - 2]}
  case $option in
    -c | --complete | --help-line) _qorcli_line ;;
    --plugin)
      compopt -o filenames 2>/dev/null
      mapfile -t COMPREPLY < <(compgen -d -- "$current"
        compgen -f -X '!*.so*' -- "$current")
      ;;
    --login) mapfile -t COMPREPLY < <(compgen -u -- "$current") ;;
    --mode | --cursor) ;;
    *)
      mapfile -t COMPREPLY < <(compgen -W '-c --plugin --complete --help-line
        --mode --cursor --login --no-pager --raw --trace --timing --help
        --version' -- "$current")
      ;;
  esac
}

complete -F _qorcli qorcli
